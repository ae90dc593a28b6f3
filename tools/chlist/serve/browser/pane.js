// A list of rows of which some can be selected. Only the rows in sight are in the document, so that thousands cost no
// more than a few; all are as high as the first.

const extraRows = 6;

class Pane {
  // onAction: a row was opened; onActive: the list has the focus; onSelect: other rows are selected, or current.
  constructor(id, { marks, onAction, onActive, onSelect }) {
    Object.assign(this, { id, marks, onAction, onActive, onSelect });
    this.box = find(id);
    this.space = make('div', { class: 'space', role: 'presentation' });
    this.box.append(this.space);
    this.rows = [];
    this.selected = new Set();  // keys
    this.current = 0;
    this.anchor = 0;
    this.rowHeight = 40;
    this.lines = new Map();  // the elements of rows in sight, by what they show
    this.listen();
  }

  listen() {
    this.box.addEventListener('scroll', () => this.renderSoon(), { passive: true });
    this.box.addEventListener('keydown', (event) => this.onKey(event));
    this.box.addEventListener('click', (event) => this.onClick(event));
    this.box.addEventListener('dblclick', (event) => {
      if (event.target.closest('.row')) {
        this.onAction('open');
      }
    });
    this.box.addEventListener('focus', () => this.onActive(this));
    this.box.addEventListener('pointerdown', () => this.onActive(this));
    new ResizeObserver(() => this.renderSoon()).observe(this.box);
  }

  // Rows are known by what they show: the selection and the current row stay with it when the list changes.
  show(rows, { keepsPlace = true } = {}) {
    const key = this.rows[this.current]?.key;
    const place = keepsPlace && key !== undefined ? rows.findIndex((row) => row.key === key) : -1;
    this.rows = rows;
    const keys = new Set(rows.map((row) => row.key));
    this.selected = new Set([...this.selected].filter((each) => keys.has(each)));
    this.current = place >= 0 ? place : Math.max(Math.min(keepsPlace ? this.current : 0, rows.length - 1), 0);
    this.anchor = Math.min(this.anchor, Math.max(rows.length - 1, 0));
    if (!keepsPlace) {
      this.box.scrollTop = 0;
    }
    this.render();
    this.onSelect();
  }

  renderSoon() {
    this.waiting ??= requestAnimationFrame(() => {
      this.waiting = null;
      this.render();
    });
  }

  render() {
    const height = this.rowHeight;
    this.space.style.height = `${this.rows.length * height}px`;
    const first = Math.max(Math.floor(this.box.scrollTop / height) - extraRows, 0);
    const last = Math.min(first + Math.ceil(this.box.clientHeight / height) + 2 * extraRows, this.rows.length);
    const lines = new Map();
    for (let i = first; i < last; ++i) {
      const shown = this.lineFor(i);
      lines.set(shown.row.key, shown);
    }
    this.lines = lines;
    this.placeEdited();
    const made = [...lines.values()].map(({ line }) => line);
    this.space.replaceChildren(...made);
    const measured = made[0]?.getBoundingClientRect().height;
    if (measured && Math.abs(measured - height) > 0.5) {
      this.rowHeight = measured;
      this.lines.clear();
      this.render();
      return;
    }
    const isInSight = this.current >= first && this.current < last;
    if (isInSight) {
      this.box.setAttribute('aria-activedescendant', `${this.id}-${this.current}`);
    } else {
      this.box.removeAttribute('aria-activedescendant');
    }
  }

  // A name that is being typed lies over its row: rows are made anew meanwhile.
  placeEdited() {
    if (this.edited) {
      this.edited.input.style.top = `${this.box.offsetTop + this.edited.index * this.rowHeight - this.box.scrollTop}px`;
    }
  }

  // The element that is there already, when it shows the same.
  lineFor(index) {
    const row = this.rows[index];
    const state = `${index} ${this.rows.length} ${this.selected.has(row.key)} ${index === this.current}`;
    const before = this.lines.get(row.key);
    return before?.row === row && before.state === state ? before : { row, state, line: this.line(index) };
  }

  line(index) {
    const row = this.rows[index];
    const isSelected = this.selected.has(row.key);
    const classes = ['row', isSelected && 'selected', index === this.current && 'current'].filter(Boolean).join(' ');
    const line = make('div', { id: `${this.id}-${index}`, role: 'option', class: classes, 'data-index': index,
                               'data-key': row.key, 'aria-selected': `${isSelected}`, 'aria-posinset': index + 1,
                               'aria-setsize': this.rows.length },
                      make('span', { class: 'handle', 'aria-hidden': 'true' }, '⠿'),
                      make('span', { class: 'number' }, row.number),
                      make('bdi', { class: 'name', dir: 'auto' }, row.name),
                      make('span', { class: 'more' }, make('bdi', { dir: 'auto' }, row.more)),
                      make('span', { class: 'marks' }, ...this.marks(row)));
    line.style.top = `${index * this.rowHeight}px`;
    return line;
  }

  get selection() {
    const chosen = this.rows.filter((row) => this.selected.has(row.key));
    const current = this.rows[this.current];
    return chosen.length > 0 || !current ? chosen : [current];
  }

  onClick(event) {
    const line = event.target.closest('.row');
    if (!line) {
      return;
    }
    const index = Number(line.dataset.index);
    if (event.shiftKey) {
      this.selectTo(index);
    } else if (event.ctrlKey || event.metaKey || this.isTouched) {
      this.toggle(index);
    } else {
      this.selected.clear();
      this.selected.add(this.rows[index].key);
      this.anchor = index;
    }
    this.goTo(index);
  }

  toggle(index) {
    const { key } = this.rows[index];
    if (!this.selected.delete(key)) {
      this.selected.add(key);
    }
    this.anchor = index;
  }

  selectTo(index) {
    const [from, to] = [Math.min(this.anchor, index), Math.max(this.anchor, index)];
    this.selected.clear();
    this.rows.slice(from, to + 1).forEach((row) => this.selected.add(row.key));
  }

  goTo(index) {
    this.current = index;
    const top = index * this.rowHeight;
    const room = this.box.clientHeight - this.rowHeight;
    this.box.scrollTop = Math.min(Math.max(this.box.scrollTop, top - room), top);
    this.render();
    this.onSelect();
  }

  onKey(event) {
    if (event.target !== this.box || event.defaultPrevented) {
      return;
    }
    const page = Math.max(Math.floor(this.box.clientHeight / this.rowHeight) - 1, 1);
    const steps = { ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page, Home: -Infinity, End: Infinity };
    if (event.key in steps && !event.altKey && this.rows.length > 0) {
      event.preventDefault();
      this.step(steps[event.key], event);
    } else if (event.key === ' ' && this.rows.length > 0) {
      event.preventDefault();
      this.toggle(this.current);
      this.goTo(this.current);
    } else if (event.key === 'a' && (event.ctrlKey || event.metaKey)) {
      event.preventDefault();
      this.rows.forEach((row) => this.selected.add(row.key));
      this.goTo(this.current);
    } else if (event.key === 'Escape') {
      this.selected.clear();
      this.goTo(this.current);
    }
  }

  step(by, { shiftKey, ctrlKey }) {
    const index = Math.min(Math.max(this.current + by, 0), this.rows.length - 1);
    if (shiftKey) {
      this.selectTo(index);
    } else if (!ctrlKey) {
      this.selected.clear();
      this.anchor = index;
    }
    this.goTo(index);
  }

  // The name in place: Enter and leaving take it, Escape does not.
  edit(row, onName) {
    const index = this.rows.indexOf(row);
    this.goTo(index);
    const input = make('input', { class: 'name-input', value: row.name, dir: 'auto', maxlength: 96,
                                  'aria-label': `New name of ${row.name}` });
    this.edited = { index, input };
    const finish = (isTaken) => {
      if (this.edited?.input === input) {
        this.edited = null;
        input.remove();
        this.box.focus();
        if (isTaken && input.value !== row.name) {
          onName(input.value);
        }
      }
    };
    input.addEventListener('keydown', (event) => {
      event.stopPropagation();
      if (event.key === 'Enter' || event.key === 'Escape') {
        event.preventDefault();
        finish(event.key === 'Enter');
      }
    });
    input.addEventListener('blur', () => finish(true));
    this.box.parentElement.append(input);
    this.placeEdited();
    input.focus();
    input.select();
  }
}
