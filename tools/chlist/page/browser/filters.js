// Which rows of a view are shown: search, type, provider, access, marks and transponder, all of them together.

const filters = {
  search: '',
  type: '',
  provider: '',
  access: '',
  favourites: false,
  locked: false,
  skipped: false,
  transponder: null,
};

const noFilters = { ...filters };

const isFree = (of) => (of.flag & scrambled) === 0;

const conditions = {
  type: (of, type) => (type === 'other' ? !(of.type in typeNames) : of.type === Number(type)),
  provider: (of, provider) => of.provider === provider.slice(1),
  access: (of, access) => isFree(of) === (access === 'free'),
  favourites: (of) => of.favourites.length > 0,
  locked: (of) => (of.flag & locked) !== 0,
  skipped: (of) => (of.flag & skipped) !== 0,
  transponder: (of, transponder) => of.transponder === transponder,
};

// Every word of the search is somewhere in the row.
function filtered(rows) {
  const words = folded(filters.search).split(/\s+/).filter(Boolean);
  const active = Object.entries(conditions).filter(([name]) => filters[name]);
  return rows.filter(
    (each) =>
      words.every((word) => each.text.includes(word)) &&
      active.every(([name, holds]) => each.service && holds(each.service, filters[name])),
  );
}

function options(select, all, values) {
  select.append(make('option', { value: '' }, all), ...values.map(([value, text]) => make('option', { value }, text)));
}

const controls = {
  onChange: () => {},

  start(onChange) {
    this.onChange = onChange;
    this.makeSelects();
    this.makeToggles();
    find('search').addEventListener('input', (event) => this.set('search', event.target.value));
    find('filters').addEventListener('submit', (event) => event.preventDefault());
    find('transponder-chip').addEventListener('click', () => this.set('transponder', null));
    find('clear').addEventListener('click', () => {
      this.clear();
      find('search').focus();
    });
  },

  makeSelects() {
    const types = [['1', 'TV'], ['2', 'Radio']];
    if (services.some((each) => !(each.type in typeNames))) {
      types.push(['other', 'Other types']);
    }
    options(find('filter-type'), 'All types', types);
    const providers = [...new Set(services.map((each) => each.provider).filter(Boolean))].sort(collator.compare);
    options(find('filter-provider'), 'All providers', providers.map((name) => [`=${name}`, name]));
    options(find('filter-access'), 'Any access', [['free', 'Free'], ['scrambled', 'Scrambled']]);
    for (const name of ['type', 'provider', 'access']) {
      find(`filter-${name}`).addEventListener('change', (event) => this.set(name, event.target.value));
    }
  },

  makeToggles() {
    for (const [name, text] of [['favourites', 'Favourites'], ['locked', 'Locked'], ['skipped', 'Skipped']]) {
      find('toggles').append(make('button', { type: 'button', class: 'toggle', id: `filter-${name}`,
                                              'aria-pressed': 'false', click: () => this.set(name, !filters[name]) },
                                  text));
    }
  },

  set(name, value) {
    filters[name] = value;
    this.changed();
  },

  clear() {
    Object.assign(filters, noFilters);
    this.changed();
  },

  isAny: () => Object.keys(filters).some((name) => filters[name] !== noFilters[name]),

  changed() {
    if (find('search').value !== filters.search) {
      find('search').value = filters.search;
    }
    for (const name of ['type', 'provider', 'access']) {
      find(`filter-${name}`).value = filters[name];
    }
    for (const name of ['favourites', 'locked', 'skipped']) {
      find(`filter-${name}`).setAttribute('aria-pressed', filters[name]);
    }
    const chip = find('transponder-chip');
    chip.hidden = filters.transponder === null;
    if (filters.transponder) {
      const { frequency, polarisation } = filters.transponder;
      chip.textContent = `${grouped.format(frequency)} ${polarisation}`;
      chip.setAttribute('aria-label', `Transponder ${chip.textContent}: remove this filter`);
    }
    find('clear').hidden = !this.isAny();
    this.onChange();
  },
};
