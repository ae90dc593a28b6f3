// The list that the report shows: what stands in the page, once.

const data = JSON.parse(document.getElementById('data').textContent);

// What fields are called everywhere: their titles, or what is said of them.
const inCapitals = (text) => text[0].toUpperCase() + text.slice(1);
const titleOf = (name) => inCapitals(data.fields[name][0]);
const aboutOf = (name) => inCapitals(data.fields[name][1]);

const { networks, transponders, services, views: allViews } = modelOf(data);

// word: what an address calls it.
const views = allViews.filter((each) => !each.isFavourites || each.rows.length > 0)
  .map((each) => ({ ...each, word: each.isFavourites ? `fav:${each.group}` : each.title }));

const unlisted = services.filter((each) => !each.isListed);
if (unlisted.length > 0) {
  views.push({
    title: 'In no view',
    word: 'none',
    isFavourites: false,
    rows: unlisted.map((each, position) => new Row(position, [null, null], each, each.id)),
  });
}

// By service: the first row that shows it, as an address names it.
const firstRows = new Map();
for (const { word, rows } of views) {
  for (const { service, position } of rows) {
    if (service && !firstRows.has(service)) {
      firstRows.set(service, { view: word, row: position });
    }
  }
}
