// What stands out of a service, as badges and as words.

const badge = (text, kind, title = null) => make('span', { class: `badge ${kind}`, title }, text);

// [text, kind, words]: words where the text is a sign.
function marksOf({ service: of }) {
  if (!of) {
    return [['no service', 'bad']];
  }
  const found = of.favourites.length > 0 ? [['★', 'star', of.favourites.join(', ')]] : [];
  for (const [bit, text, kind] of [
    [scrambled, 'scrambled', 'key'],
    [locked, 'locked', 'lock'],
    [skipped, 'skipped', 'skip'],
    [carriesData, 'data', 'plain'],
  ]) {
    if (of.flag & bit) {
      found.push([text, kind]);
    }
  }
  return found;
}

const marks = (row) => marksOf(row).map(([text, kind, words]) => badge(text, kind, words));
const markWords = (row) => marksOf(row).map(([text, , words]) => words ?? text).join(', ');
