// The table of a view. Only the rows in sight are in the document, so that thousands cost no more than a few.

const extraRows = 8;

const pidText = (pid) => (pid === unsetPid ? '' : `${pid}`);

const markRank = ({ service: of }) => (of ? (of.flag & (scrambled | locked | skipped | carriesData)) + 1 : 0);
const ofService = (value) => (each) => (each.service ? value(each.service) : '');
const pid = (name) => (each) => (each.service && each.service.pids[name] !== unsetPid ? each.service.pids[name] : null);
const has = (value) => services.some((each) => value(each) !== '');

// value: what is sorted; nothing sorts behind everything. show: the text, when it is another one.
const columns = [
  { key: 'number', title: 'No.', width: 4, isNumber: true, value: (each) => (each.major ?? 0) + each.minor / 65536,
    show: (each) => each.number },
  { key: 'name', title: titleOf('name'), width: 0, value: ofService((of) => of.name) },
  { key: 'type', title: titleOf('type'), width: 4.5, value: ofService((of) => of.typeName) },
  { key: 'provider', title: titleOf('provider'), width: 10, value: ofService((of) => of.provider) },
  { key: 'marks', title: 'Marks', width: 11, value: markRank, cell: marks, text: markWords },
  { key: 'genre', title: titleOf('genre'), width: 7.5, value: ofService((of) => of.genre), isShown: has((of) => of.genre) },
  { key: 'country', title: titleOf('country'), width: 7.5, value: ofService((of) => of.country),
    isShown: has((of) => of.country) },
  { key: 'network', title: 'Network', width: 7, value: ofService((of) => of.transponder.network.name) },
  { key: 'frequency', title: `${titleOf('frequency')}, kHz`, width: 8.5, isNumber: true, value: (each) => each.id.frequency,
    show: (each) => grouped.format(each.id.frequency) },
  { key: 'polarisation', title: `${titleOf('polarisation')}.`, width: 3.5, value: (each) => each.id.polarisation },
  { key: 'ts', title: 'TS id', width: 4.5, isNumber: true, value: (each) => each.id.tsId },
  { key: 'service', title: aboutOf('service_id'), width: 5.5, isNumber: true, value: (each) => each.id.serviceId },
  { key: 'video', title: titleOf('video_pid'), width: 5.75, isNumber: true, value: pid('video') },
  { key: 'audio', title: titleOf('audio_pid'), width: 5.75, isNumber: true, value: pid('audio') },
].filter((column) => column.isShown ?? true);

const isNothing = (value) => value === '' || value === null;

function compare(column, direction) {
  return (a, b) => {
    const [x, y] = [column.value(a), column.value(b)];
    if (isNothing(x) || isNothing(y)) {
      return isNothing(x) - isNothing(y) || a.position - b.position;
    }
    const difference = typeof x === 'number' ? x - y : collator.compare(x, y);
    return difference * direction || a.position - b.position;
  };
}

const table = {
  box: find('table-box'),
  grid: find('table'),
  body: find('rows'),
  rows: [],
  sorted: null,  // {column, direction}; none: the view's own order
  current: 0,
  rowHeight: 36,
  pointed: -1,  // the row that a link led to

  start(onSort, onOpen) {
    this.onOpen = onOpen;
    find('columns').append(...columns.map(({ width }) => make('col', width ? { style: `width: ${width}rem` } : {})));
    find('titles').append(...columns.map((column) => this.title(column, onSort)));
    const fixed = columns.reduce((sum, { width }) => sum + width, 0);
    this.grid.style.setProperty('--fixed', `${fixed}rem`);
    let isWaiting = false;
    this.box.addEventListener('scroll', () => {
      if (!isWaiting) {
        isWaiting = true;
        requestAnimationFrame(() => {
          isWaiting = false;
          this.render();
        });
      }
    });
    this.grid.addEventListener('keydown', (event) => this.onKey(event));
    this.body.addEventListener('click', (event) => {
      const line = event.target.closest('tr[aria-rowindex]');
      if (line && getSelection().isCollapsed) {
        this.open(Number(line.getAttribute('aria-rowindex')) - 2);
      }
    });
    addEventListener('resize', () => this.render());
  },

  title(column, onSort) {
    const button = make('button', { type: 'button', click: () => onSort(column) }, column.title);
    return make('th', { scope: 'col', class: column.isNumber ? 'number' : null, 'data-key': column.key,
                        'aria-sort': 'none' }, button);
  },

  // Ascending, descending, the view's own order.
  sortBy(column) {
    if (this.sorted?.column !== column) {
      this.setOrder({ column, direction: 1 });
    } else {
      this.setOrder(this.sorted.direction === 1 ? { column, direction: -1 } : null);
    }
  },

  setOrder(sorted) {
    this.sorted = sorted;
    const words = { 1: 'ascending', '-1': 'descending' };
    for (const title of find('titles').children) {
      const isSorted = this.sorted?.column.key === title.dataset.key;
      title.setAttribute('aria-sort', isSorted ? words[this.sorted.direction] : 'none');
    }
  },

  // The box keeps the height of the whole view while filters take rows out of it.
  show(rows, rowsOfView) {
    this.rows = this.sorted ? rows.toSorted(compare(this.sorted.column, this.sorted.direction)) : rows;
    this.current = 0;
    this.pointed = -1;
    this.box.scrollTop = 0;
    this.box.style.setProperty('--rows', Math.max(rowsOfView, 3));
    this.grid.setAttribute('aria-rowcount', rows.length + 1);
    this.render();
  },

  render() {
    const height = this.rowHeight;
    const first = Math.max(Math.floor(this.box.scrollTop / height) - extraRows, 0);
    const room = Math.ceil(this.box.clientHeight / height) + 2 * extraRows;
    const last = Math.min(first + room, this.rows.length);
    const lines = [];
    for (let i = first; i < last; ++i) {
      lines.push(this.line(i));
    }
    this.body.replaceChildren();
    appendAll(this.body, [this.space(first * height), ...lines, this.space((this.rows.length - last) * height)]);
    const measured = lines[0]?.getBoundingClientRect().height;
    if (measured && Math.abs(measured - height) > 0.5) {
      this.rowHeight = measured;
      this.render();
    }
  },

  space(height) {
    const space = make('tr', { class: 'space', 'aria-hidden': 'true' });
    space.style.height = `${height}px`;
    return space;
  },

  line(index) {
    const of = this.rows[index];
    const isCurrent = index === this.current;
    const cells = columns.map((column) => this.cell(column, of));
    const classes = [index % 2 ? 'odd' : 'even', isCurrent && 'current', index === this.pointed && 'pointed'];
    const line = make('tr', { id: `row-${index}`, 'aria-rowindex': index + 2,
                              class: classes.filter(Boolean).join(' ') }, ...cells);
    if (isCurrent) {
      this.grid.setAttribute('aria-activedescendant', line.id);
    }
    return line;
  },

  cell(column, of) {
    if (column.cell) {
      const parts = column.cell(of);
      return make('td', { class: column.key, title: parts.map((part) => part.textContent).join(' ') || null }, ...parts);
    }
    const text = `${(column.show ?? column.value)(of) ?? ''}`;
    return make('td', { class: column.isNumber ? `number ${column.key}` : column.key, title: text || null,
                        dir: column.isNumber ? null : 'auto' }, text);
  },

  onKey(event) {
    if (event.target !== this.grid) {
      return;
    }
    const page = Math.max(Math.floor(this.box.clientHeight / this.rowHeight) - 2, 1);
    const steps = { ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page, Home: -Infinity, End: Infinity };
    if (event.key === 'Enter' || event.key === ' ') {
      event.preventDefault();
      this.open(this.current);
    } else if (event.key in steps && this.rows.length > 0) {
      event.preventDefault();
      this.goTo(Math.min(Math.max(this.current + steps[event.key], 0), this.rows.length - 1));
    }
  },

  goTo(index) {
    this.current = index;
    const head = find('titles').getBoundingClientRect().height;
    const top = index * this.rowHeight;
    const inSight = this.box.clientHeight - head - this.rowHeight;
    this.box.scrollTop = Math.min(Math.max(this.box.scrollTop, top - inSight), top);
    this.render();
  },

  open(index) {
    if (this.rows[index]) {
      this.current = index;
      this.render();
      this.onOpen(this.rows[index]);
    }
  },

  // Shows a row as the one that somebody was led to.
  point(index) {
    this.pointed = index;
    this.goTo(index);
  },
};
