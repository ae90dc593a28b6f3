// The list that the report shows: what stands in the page, once.

const data = JSON.parse(document.getElementById('data').textContent);
const { networks, transponders, services, views: allViews } = modelOf(data);

const views = allViews.filter((each) => !each.isFavourites || each.rows.length > 0);

const unlisted = services.filter((each) => !each.isListed);
if (unlisted.length > 0) {
  views.push({
    title: 'In no view',
    isFavourites: false,
    rows: unlisted.map((each, position) => new Row(position, [null, null], each, each.id)),
  });
}
