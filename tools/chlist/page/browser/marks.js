// What stands out of a service, as badges.

const badge = (text, kind, title = null) => make('span', { class: `badge ${kind}`, title }, text);

function marks({ service: of }) {
  if (!of) {
    return [badge('no service', 'bad')];
  }
  const made = of.favourites.length > 0 ? [badge('★', 'star', of.favourites.join(', '))] : [];
  for (const [bit, text, kind] of [
    [scrambled, 'scrambled', 'key'],
    [locked, 'locked', 'lock'],
    [skipped, 'skipped', 'skip'],
    [carriesData, 'data', 'plain'],
  ]) {
    if (of.flag & bit) {
      made.push(badge(text, kind));
    }
  }
  return made;
}
