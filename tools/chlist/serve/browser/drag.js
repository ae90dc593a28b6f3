// Rows are dragged with the mouse, and by their handles with a finger: to another place, onto a tab, from list to list.

const startDistance = 6;
const edge = 48;          // pixels from the end of a list within which it scrolls
const timeOverTab = 600;  // milliseconds after which the tab opens

const drag = {
  rows: null,  // what is dragged; null when nothing is
  pressed: null,
  target: null,

  start() {
    for (const pane of [edits.left, edits.right]) {
      pane.box.addEventListener('pointerdown', (event) => this.onPress(event, pane));
    }
    addEventListener('pointermove', (event) => this.onMove(event));
    addEventListener('pointerup', (event) => this.onRelease(event));
    addEventListener('pointercancel', () => this.end());
    addEventListener('keydown', (event) => {
      if (event.key === 'Escape' && this.rows) {
        event.preventDefault();
        this.end();
      }
    }, true);
  },

  onPress(event, pane) {
    const line = event.target.closest('.row');
    pane.isTouched = event.pointerType === 'touch';
    const isHeld = event.pointerType === 'mouse' || event.target.closest('.handle');
    if (line && isHeld && event.button === 0) {
      this.pressed = { x: event.clientX, y: event.clientY, pane, index: Number(line.dataset.index) };
      if (event.pointerType !== 'mouse') {
        pane.box.setPointerCapture(event.pointerId);  // its row may be made anew
      }
    }
  },

  onMove(event) {
    if (this.pressed && !this.rows) {
      const distance = Math.hypot(event.clientX - this.pressed.x, event.clientY - this.pressed.y);
      if (distance >= startDistance) {
        this.begin();
      }
    }
    if (this.rows) {
      event.preventDefault();
      this.at = { x: event.clientX, y: event.clientY };
      this.follow();
    }
  },

  // The selected rows, when the row is one of them; else the row alone.
  begin() {
    const { pane, index } = this.pressed;
    const row = pane.rows[index];
    if (!pane.selected.has(row.key)) {
      pane.selected.clear();
      pane.selected.add(row.key);
      pane.current = index;
      pane.render();
    }
    const rows = pane.selection.filter((each) => each.service);
    if (rows.length === 0) {
      this.end();
      return;
    }
    this.rows = rows;
    find('ghost').textContent = called(rows);
    find('ghost').hidden = false;
    document.body.classList.add('dragging');
    this.timer = setInterval(() => this.scroll(), 16);
  },

  follow() {
    const { x, y } = this.at;
    find('ghost').style.transform = `translate(${x + 12}px, ${y + 12}px)`;
    const under = document.elementFromPoint(x, y);
    this.point(this.targetUnder(under, y), under);
  },

  targetUnder(under, y) {
    const tab = under?.closest('.tab');
    if (tab) {
      return { tab, view: Number(tab.id.slice('tab-'.length)) };
    }
    if (under?.closest('#new-group')) {
      return { tab: find('new-group'), isNew: true };
    }
    const { box, rows, rowHeight } = edits.left;
    if (!box.parentElement.contains(under)) {
      return null;
    }
    const from = y - box.getBoundingClientRect().top + box.scrollTop;
    return { index: Math.min(Math.max(Math.round(from / rowHeight), 0), rows.length) };
  },

  point(target) {
    document.querySelectorAll('.drop-on').forEach((each) => each.classList.remove('drop-on'));
    target?.tab?.classList.add('drop-on');
    this.openTabLater(target?.view);
    this.target = target;
    const { box, rowHeight } = edits.left;
    box.classList.toggle('drop-at', target?.index !== undefined);
    if (target?.index !== undefined) {
      box.style.setProperty('--drop', `${target.index * rowHeight}px`);
    }
  },

  openTabLater(view) {
    if (view !== this.overTab) {
      clearTimeout(this.tabTimer);
      this.overTab = view;
      this.tabTimer = view === undefined ? null : setTimeout(() => arranged.choose(view), timeOverTab);
    }
  },

  // What lies beyond the edges comes into sight: rows of the list, and tabs.
  scroll() {
    const { x, y } = this.at ?? { x: NaN, y: NaN };
    const over = (element) => {
      const { top, bottom, left, right } = element.getBoundingClientRect();
      const isIn = x >= left && x <= right && y >= top - edge && y <= bottom + edge;
      const step = (from, to, at) => (at < from + edge ? -12 : at > to - edge ? 12 : 0);
      return isIn ? { down: step(top, bottom, y), across: y <= bottom ? step(left, right, x) : 0 } : null;
    };
    const { box } = edits.left;
    const before = [box.scrollTop, find('tabs').scrollLeft];
    box.scrollTop += over(box)?.down ?? 0;
    find('tabs').scrollLeft += this.target?.tab ? over(find('tabs'))?.across ?? 0 : 0;
    if (box.scrollTop !== before[0] || find('tabs').scrollLeft !== before[1]) {
      this.follow();
    }
  },

  onRelease() {
    const { rows, target } = this;
    this.end();
    if (!rows || !target) {
      return;
    }
    addEventListener('click', (event) => event.stopPropagation(), { capture: true, once: true });
    setTimeout(() => dispatchEvent(new Event('click')), 0);  // none comes when another element was pressed
    if (target.index !== undefined) {
      edits.place(rows, target.index);
    } else if (target.isNew) {
      dialogs.newGroup(rows);
    } else if (arranged.views[target.view].isFavourites) {
      edits.add(arranged.views[target.view], rows);
    } else {
      notices.tell('error', 'Services come into favourite groups; the other views show them by themselves.');
    }
  },

  end() {
    clearInterval(this.timer);
    this.point(null);
    Object.assign(this, { rows: null, pressed: null, target: null, at: null });
    find('ghost').hidden = true;
    document.body.classList.remove('dragging');
  },
};
