// Puts the parts together.

const sizeText = (bytes) => `${grouped.format(bytes)} bytes`;

function showFile({ name, version, size }) {
  document.title = `${name} – channel list`;
  find('file-name').textContent = name;
  find('file-facts').textContent = `Version ${version} · ${sizeText(size)}`;
}

function showTotals() {
  const count = (holds) => services.filter(holds).length;
  const totals = [
    ['Services', services.length],
    ['TV', count((each) => each.type === 1)],
    ['Radio', count((each) => each.type === 2)],
    ['Other', count((each) => !(each.type in typeNames))],
    ['Scrambled', count((each) => !isFree(each))],
    ['Providers', data.providers.length],
    ['Networks', networks.length],
    ['Transponders', transponders.length],
  ].filter(([name, value]) => value > 0 || name === 'Services');
  find('totals').append(
    ...totals.map(([name, value]) => make('div', {}, make('dt', {}, name), make('dd', {}, grouped.format(value)))),
  );
}

let currentView = 0;

function showRows() {
  const { rows } = views[currentView];
  const { shown, counts } = filtered(rows);
  table.show(shown, rows.length);
  controls.showCounts(counts);
  showChosenView();
  find('shown-count').textContent = shown.length === rows.length
    ? counted(rows.length, 'entry')
    : `${grouped.format(shown.length)} of ${counted(rows.length, 'entry')}`;
  find('nothing').hidden = shown.length > 0;
  find('nothing').textContent = rows.length === 0 ? 'This view has no entries.' : 'Nothing here matches.';
}

// Another view, other filters or another order: no row is pointed at any more.
function showAnew() {
  Object.assign(place, { row: null, isOpen: false });
  showRows();
  place.write();
}

function chooseView(index) {
  currentView = index;
  showAnew();
}

function showChosenView() {
  const tabs = [...find('tabs').children];
  const hasTab = tabs.some((tab) => tab.id === `tab-${currentView}`);
  tabs.forEach((tab, i) => {
    const isChosen = tab.id === `tab-${currentView}`;
    tab.setAttribute('aria-selected', isChosen);
    tab.setAttribute('tabindex', isChosen || (!hasTab && i === 0) ? 0 : -1);
  });
  find('group').value = hasTab ? '' : `${currentView}`;
  find('group').classList.toggle('chosen', !hasTab);
  find('panel').setAttribute('aria-labelledby', hasTab ? `tab-${currentView}` : 'group');
}

function onTabKey(event) {
  const tabs = [...find('tabs').children];
  const at = tabs.indexOf(event.target);
  const steps = { ArrowRight: 1, ArrowLeft: -1, Home: -at, End: tabs.length - 1 - at };
  if (at >= 0 && event.key in steps) {
    event.preventDefault();
    const next = tabs[(at + steps[event.key] + tabs.length) % tabs.length];
    next.click();
    next.focus();
  }
}

// Views as tabs; favourite groups, of which there may be many, as a choice beside them.
function showTabs() {
  const groups = make('select', { id: 'group', class: 'groups', 'aria-label': 'Favourite group',
                                  change: () => chooseView(Number(find('group').value || 0)) });
  groups.append(make('option', { value: '' }, '★ Favourites'));
  views.forEach(({ title, isFavourites, rows }, i) => {
    if (isFavourites) {
      groups.append(make('option', { value: i }, `★ ${title} (${grouped.format(rows.length)})`));
    } else {
      find('tabs').append(make('button', { type: 'button', role: 'tab', id: `tab-${i}`, 'aria-controls': 'panel',
                                           class: 'tab', click: () => chooseView(i) },
        title, ' ', make('span', { class: 'tab-count' }, grouped.format(rows.length))));
    }
  });
  groups.hidden = groups.options.length === 1;
  find('tab-line').append(groups);
  find('tabs').addEventListener('keydown', onTabKey);
}

showFile(data.file);
showTotals();
showTabs();
showFindings(data.findings);
startTaking();

details.start(() => {
  place.isOpen = false;
  place.write();
});

const shownPlans = showPlans((transponder) => {
  controls.set('transponder', filters.transponder === transponder ? null : transponder);
  find('channels').scrollIntoView({ block: 'nearest' });
});

table.start((column) => {
  table.sortBy(column);
  showAnew();
}, (row) => {
  Object.assign(place, { row: row.position, isOpen: true });
  place.write();
  details.show(row);
});

controls.start(() => {
  shownPlans.forEach((plan) => plan.choose(filters.transponder));
  showAnew();
});

place.start();
