// Which rows of a view are shown: search, choices, marks and transponder, all of them together; and how many each choice
// would show.

const filters = {
  search: '',
  network: '',
  type: '',
  access: '',
  provider: '',
  favourites: false,
  locked: false,
  skipped: false,
  transponder: null,
};

const noFilters = { ...filters };
const choices = ['network', 'type', 'access', 'provider'];
const toggles = { favourites: 'Favourites', locked: 'Locked', skipped: 'Skipped' };

const isFree = (of) => (of.flag & scrambled) === 0;

// What a service is chosen by. Names have a mark in front: an empty choice is none.
function valuesOf(of) {
  of.values ??= {
    network: `=${of.transponder.network.name}`,
    type: of.type in typeNames ? `${of.type}` : 'other',
    access: isFree(of) ? 'free' : 'scrambled',
    provider: `=${of.provider}`,
    favourites: of.favourites.length > 0,
    locked: (of.flag & locked) !== 0,
    skipped: (of.flag & skipped) !== 0,
    transponder: of.transponder,
  };
  return of.values;
}

class ChoiceCounts {
  constructor() {
    this.counts = Object.fromEntries([...choices, ...Object.keys(toggles)].map((name) => [name, new Map()]));
  }

  add(values, name) {
    const of = this.counts[name];
    of?.set(values[name], (of.get(values[name]) ?? 0) + 1);
  }

  of(name, value) {
    return this.counts[name].get(value) ?? 0;
  }
}

// Every word of the search is somewhere in the row. A choice counts rows that meet all filters but its own.
function filtered(rows) {
  const words = wordsOf(filters.search);
  const active = Object.keys(filters).filter((name) => name !== 'search' && filters[name]);
  const counts = new ChoiceCounts();
  const countable = Object.keys(counts.counts);
  const found = rows.filter((each) => words.every((word) => each.text.includes(word)));
  const shown = found.filter(({ service }) => {
    const values = service ? valuesOf(service) : {};
    const failed = active.filter((name) => values[name] !== filters[name]);
    if (service && failed.length <= 1) {
      (failed.length === 0 ? countable : failed).forEach((name) => counts.add(values, name));
    }
    return failed.length === 0;
  });
  return { shown, counts };
}

const controls = {
  onChange: () => {},
  texts: new Map(),  // what options say in front of their counts

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
    const named = (nameOf) => [...new Set(services.map(nameOf).filter(Boolean))].sort(collator.compare)
      .map((name) => [`=${name}`, name]);
    this.options('network', 'All networks', named((each) => each.transponder.network.name));
    this.options('type', 'All types', types);
    this.options('access', 'Any access', [['free', 'Free'], ['scrambled', 'Scrambled']]);
    this.options('provider', 'All providers', named((each) => each.provider));
  },

  options(name, all, values) {
    const select = find(`filter-${name}`);
    const made = values.map(([value, text]) => make('option', { value }, text));
    made.forEach((option, i) => this.texts.set(option, values[i][1]));
    select.append(make('option', { value: '' }, all));
    appendAll(select, made);
    select.addEventListener('change', () => this.set(name, select.value));
  },

  makeToggles() {
    for (const name of Object.keys(toggles)) {
      find('toggles').append(make('button', { type: 'button', class: 'tool toggle', id: `filter-${name}`,
                                              'aria-pressed': 'false', click: () => this.set(name, !filters[name]) }));
    }
  },

  showCounts(counts) {
    for (const [option, text] of this.texts) {
      const name = option.parentElement.id.slice('filter-'.length);
      option.textContent = `${text} (${grouped.format(counts.of(name, option.value))})`;
    }
    for (const [name, text] of Object.entries(toggles)) {
      find(`filter-${name}`).replaceChildren(`${text} `, make('span', { class: 'tab-count' },
                                                              grouped.format(counts.of(name, true))));
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
    choices.forEach((name) => {
      find(`filter-${name}`).value = filters[name];
    });
    Object.keys(toggles).forEach((name) => find(`filter-${name}`).setAttribute('aria-pressed', filters[name]));
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
