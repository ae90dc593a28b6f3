// What is shown as the page's address behind its "#": a link leads to the same view, filters, order and row.

const place = {
  // The row that a link led to, by its position in its view; and whether its details are open.
  row: null,
  isOpen: false,

  start() {
    addEventListener('hashchange', () => this.read());
    this.read();
  },

  addressOf(fields) {
    const isSet = ([, value]) => value !== '' && value !== false && value !== null;
    return `#${new URLSearchParams(Object.entries(fields).filter(isSet))}`;
  },

  address() {
    const { transponder, ...others } = filters;
    return this.addressOf({ view: currentView === 0 ? '' : views[currentView].word, ...others,
                            transponder: transponder?.index ?? null,
                            sort: table.sorted ? `${table.sorted.column.key}:${table.sorted.direction}` : '',
                            row: this.row, open: this.isOpen });
  },

  write() {
    history.replaceState(null, '', this.address());
  },

  read() {
    const fields = new URLSearchParams(location.hash.slice(1));
    const view = views.findIndex(({ word }) => word === fields.get('view'));
    const [key, direction] = (fields.get('sort') ?? '').split(':');
    const column = columns.find((each) => each.key === key);
    for (const [name, unset] of Object.entries(noFilters)) {
      filters[name] = typeof unset === 'boolean' ? fields.get(name) === 'true' : fields.get(name) ?? unset;
    }
    filters.transponder = transponders[fields.get('transponder') ?? -1] ?? null;
    table.setOrder(column ? { column, direction: direction === '-1' ? -1 : 1 } : null);
    currentView = Math.max(view, 0);
    controls.changed();
    this.lead(fields);
  },

  lead(fields) {
    const position = fields.has('row') ? Number(fields.get('row')) : NaN;
    const index = table.rows.findIndex((row) => row.position === position);
    if (index < 0) {
      return;
    }
    table.point(index);
    this.row = position;
    this.isOpen = fields.get('open') === 'true';
    this.write();
    find('table-box').scrollIntoView({ block: 'nearest' });
    if (this.isOpen) {
      details.show(table.rows[index]);
    } else {
      find('table').focus({ preventScroll: true });
    }
  },
};
