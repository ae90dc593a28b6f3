// The views and favourite groups as tabs, and the words by which edits name them.

const arranged = {
  model: null,
  views: [],
  current: 0,
  onShow: () => {},

  get view() {
    return this.views[this.current];
  },

  // Groups that there are, empty ones too. The tab stays on the view that it was on, also when groups change places.
  take(list, wanted = null) {
    const before = this.views.length > 0 ? this.view : null;
    this.model = modelOf(list);
    this.views = this.model.views.filter((view) => !view.isFavourites || view.group <= list.favourite_groups);
    const same = (view) => view.title === (wanted ?? before?.title) && (wanted !== null || view.kind === before?.kind);
    const found = before || wanted !== null ? this.views.findIndex(same) : 0;
    this.current = found >= 0 ? found : Math.min(this.current, this.views.length - 1);
    this.showTabs();
  },

  get groups() {
    return this.views.filter((view) => view.isFavourites);
  },

  // By its name where that says which one it is, else by its position.
  wordForGroup(view) {
    const isAlone = this.groups.filter((each) => folded(each.title) === folded(view.title)).length === 1;
    const isNamed = view.title !== `Favourites ${view.group}` && !view.title.includes('\ufffd');
    return isAlone && isNamed ? view.title : `${view.group}`;
  },

  wordForView(view) {
    const words = { ALL: 'all', TV: 'tv', radio: 'radio', USER: 'user', promotion: 'promo' };
    return view.isFavourites ? `fav:${this.wordForGroup(view)}` : words[view.kind];
  },

  choose(index, hasFocus = false) {
    this.current = (index + this.views.length) % this.views.length;
    this.showTabs();
    this.onShow();
    if (hasFocus) {
      find(`tab-${this.current}`).focus();
    }
  },

  showTabs() {
    const tabs = this.views.map((view, i) =>
      make('button', { type: 'button', role: 'tab', id: `tab-${i}`, 'aria-controls': 'arranged-panel',
                       'aria-selected': `${i === this.current}`, tabindex: i === this.current ? 0 : -1,
                       class: view.isFavourites ? 'tab favourites' : 'tab', click: () => this.choose(i) },
           make('bdi', {}, view.title), ' ', make('span', { class: 'tab-count' }, grouped.format(view.rows.length))));
    const hadFocus = find('tabs').contains(document.activeElement);
    find('tabs').replaceChildren(...tabs);
    tabs[this.current].scrollIntoView({ block: 'nearest', inline: 'nearest' });
    if (hadFocus) {
      tabs[this.current].focus();
    }
    find('arranged-panel').setAttribute('aria-labelledby', `tab-${this.current}`);
    find('group-tools').hidden = !this.view.isFavourites;
  },

  start() {
    find('tabs').addEventListener('keydown', (event) => {
      const steps = { ArrowRight: 1, ArrowLeft: -1, Home: -this.current, End: this.views.length - 1 - this.current };
      if (event.key in steps && !event.altKey) {
        event.preventDefault();
        this.choose(this.current + steps[event.key], true);
      }
    });
  },
};
