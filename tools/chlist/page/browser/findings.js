// What is wrong with the list, by topic.

const severities = ['error', 'warning', 'note'];
const firstFindings = 50;
const capital = (text) => text.charAt(0).toUpperCase() + text.slice(1);

function byTopic(findings) {
  const rankOf = ([first]) => severities.indexOf(first.severity);
  const topics = groupBy(findings, (each) => [each.severity, each.kind, each.consequence].join('\n'));
  return [...topics.values()].sort((a, b) => rankOf(a) - rankOf(b));
}

// Where the row is that a finding is about: its entry, or the first one that shows its service. None of others.
function rowOf({ entry, service }) {
  if (!entry) {
    return firstRows.get(services[service]);
  }
  const view = views.find((each) => each.place === entry[0]);
  return view?.rows[entry[1]] && { view: view.word, row: entry[1] };
}

function findingLine(finding) {
  const { what, offset } = finding;
  const row = rowOf(finding);
  const title = `at byte ${grouped.format(offset)} of the file`;
  return make('li', { dir: 'auto', title }, row ? make('a', { href: place.addressOf(row) }, what) : what);
}

const findingLines = (findings) => findings.map(findingLine);

// A long topic shows its first findings, and the others on demand.
function topicBlock(findings) {
  const { severity, kind, consequence } = findings[0];
  const list = make('ul', {}, ...findingLines(findings.slice(0, firstFindings)));
  const block = make('div', { class: `topic ${severity}` },
    make('h3', {}, make('span', { class: 'badge' }, severity), ` ${capital(kind.replaceAll('-', ' '))} `,
         make('span', { class: 'hint' }, grouped.format(findings.length))),
    ...(consequence ? [make('p', {}, `${capital(consequence)}.`)] : []), list);
  if (findings.length > firstFindings) {
    const more = make('button', { type: 'button', class: 'quiet', click: () => {
      appendAll(list, findingLines(findings.slice(firstFindings)));
      more.remove();
    } }, `Show the other ${grouped.format(findings.length - firstFindings)}`);
    block.append(more);
  }
  return block;
}

function showFindings(findings) {
  find('health-badges').addEventListener('click', (event) => {
    event.preventDefault();
    find('health').open = true;
    find('health').scrollIntoView();
    find('health').querySelector('summary').focus();
  });
  if (findings.length === 0) {
    find('health-counts').append(make('span', { class: 'badge good' }, 'nothing found'));
    find('health-badges').append(make('span', { class: 'badge good' }, 'nothing found'));
    find('health-topics').append(make('p', { class: 'hint' }, 'Entries, services, numbers, identities, groups and texts are as they should be.'));
    return;
  }
  for (const severity of severities) {
    const count = findings.filter((each) => each.severity === severity).length;
    if (count > 0) {
      for (const counts of [find('health-counts'), find('health-badges')]) {
        counts.append(make('span', { class: `badge ${severity}` }, counted(count, severity)));
      }
    }
  }
  find('health-topics').append(...byTopic(findings).map(topicBlock));
}
