// Every service, narrowed by words, by conditions that the server understands, and by choices.

const operators = /[a-z_]\s*(?:!=|!~|=|~|<|>)/i;

const search = {
  pane: null,
  rows: [],
  found: null,  // whether the server found a service, by its place; null when it was not asked
  lastAsked: 0,

  start(pane) {
    this.pane = pane;
    const again = () => this.show({ keepsPlace: false });
    find('search').addEventListener('input', () => this.onText());
    ['network', 'provider', 'type', 'access', 'missing'].forEach((name) =>
      find(`filter-${name}`).addEventListener('change', again));
    find('filter-new').addEventListener('change', () => this.onText());
    find('filters').addEventListener('submit', (event) => event.preventDefault());
  },

  // Of another list. Numbers are those of ALL.
  take({ services, views }) {
    const numbers = new Map();
    views.find((view) => view.kind === 'ALL').rows.forEach((row) => {
      if (row.service && !numbers.has(row.service)) {
        numbers.set(row.service, row.number);
      }
    });
    const keyOf = uniqueKeys();
    this.rows = services.map((service) => rowOf(service, service.id, numbers.get(service) ?? '', keyOf));
    this.offerChoices(services);
    this.onText({ keepsPlace: true });
  },

  offerChoices(services) {
    const names = (valueOf) => [...new Set(services.map(valueOf).filter(Boolean))].sort(collator.compare);
    this.offer('network', 'All networks', names((each) => each.transponder.network.name));
    this.offer('provider', 'All providers', names((each) => each.provider));
    this.offer('type', 'All types', names((each) => each.typeName));
    this.offer('access', 'Any access', ['free', 'scrambled']);
  },

  offer(name, all, values) {
    const select = find(`filter-${name}`);
    const { value } = select;
    select.replaceChildren(make('option', { value: '' }, all),
                           ...values.map((each) => make('option', { value: each }, each)));
    select.value = values.includes(value) ? value : '';
  },

  get isCondition() {
    return operators.test(find('search').value);
  },

  // A condition is understood where edits understand it, and the server knows what is new.
  async onText(how = { keepsPlace: false }) {
    const asked = ++this.lastAsked;
    find('search-error').textContent = '';
    this.found = null;
    const calls = [];
    if (this.isCondition) {
      calls.push(server.ask('find', { where: find('search').value }));
    }
    if (find('filter-new').checked) {
      calls.push(server.ask('find-new', {}));
    }
    if (calls.length === 0) {
      this.show(how);
      return;
    }
    try {
      const sets = (await Promise.all(calls)).map(({ services }) => new Set(services));
      if (asked === this.lastAsked) {
        this.found = (index) => sets.every((each) => each.has(index));
        this.show(how);
      }
    } catch (error) {
      if (asked === this.lastAsked) {
        find('search-error').textContent = error.message;
      }
    }
  },

  matches() {
    const words = this.isCondition ? [] : wordsOf(find('search').value);
    const network = find('filter-network').value;
    const provider = find('filter-provider').value;
    const type = find('filter-type').value;
    const access = find('filter-access').value;
    const shown = find('filter-missing').checked ? new Set(arranged.view.rows.map((row) => row.service)) : new Set();
    return ({ service, number }) =>
      (!this.found || this.found(service.index)) &&
      words.every((word) => number === word || service.text.includes(word)) &&
      (!network || service.transponder.network.name === network) &&
      (!provider || service.provider === provider) &&
      (!type || service.typeName === type) &&
      (!access || ((service.flag & scrambled) !== 0) === (access === 'scrambled')) &&
      !shown.has(service);
  },

  show(how = {}) {
    const rows = this.rows.filter(this.matches());
    this.pane.show(rows, how);
    find('known-count').textContent = rows.length === this.rows.length
      ? counted(rows.length, 'service')
      : `${grouped.format(rows.length)} of ${counted(this.rows.length, 'service')}`;
  },
};
