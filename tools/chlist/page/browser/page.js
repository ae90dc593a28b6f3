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
  ];
  find('totals').append(
    ...totals.map(([name, value]) => make('div', {}, make('dt', {}, name), make('dd', {}, grouped.format(value)))),
  );
}

let currentView = 0;

function showRows() {
  const { rows } = views[currentView];
  const shown = filtered(rows);
  table.show(shown, rows.length);
  find('shown-count').textContent = shown.length === rows.length
    ? counted(rows.length, 'entry')
    : `${grouped.format(shown.length)} of ${counted(rows.length, 'entry')}`;
  find('nothing').hidden = shown.length > 0;
  find('nothing').textContent = rows.length === 0 ? 'This view has no entries.' : 'Nothing here matches.';
}

function chooseView(index) {
  currentView = index;
  [...find('tabs').children].forEach((tab, i) => {
    tab.setAttribute('aria-selected', i === index);
    tab.setAttribute('tabindex', i === index ? 0 : -1);
  });
  find('panel').setAttribute('aria-labelledby', `tab-${index}`);
  showRows();
}

function onTabKey(event) {
  const steps = { ArrowRight: 1, ArrowLeft: -1, Home: -currentView, End: views.length - 1 - currentView };
  if (event.key in steps) {
    event.preventDefault();
    chooseView((currentView + steps[event.key] + views.length) % views.length);
    find(`tab-${currentView}`).focus();
  }
}

function showTabs() {
  find('tabs').append(...views.map(({ title, isFavourites, rows }, i) =>
    make('button', { type: 'button', role: 'tab', id: `tab-${i}`, 'aria-controls': 'panel',
                     class: isFavourites ? 'tab favourites' : 'tab', click: () => chooseView(i) },
      make('bdi', {}, title), ' ', make('span', { class: 'tab-count' }, grouped.format(rows.length)))));
  find('tabs').addEventListener('keydown', onTabKey);
}

showFile(data.file);
showTotals();
showFindings(data.findings);
details.start();
showTabs();

const shownPlans = showPlans((transponder) =>
  controls.set('transponder', filters.transponder === transponder ? null : transponder));

table.start((column) => {
  table.sortBy(column);
  showRows();
});

controls.start(() => {
  shownPlans.forEach((plan) => plan.choose(filters.transponder));
  showRows();
});

chooseView(0);
