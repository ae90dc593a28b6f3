// Puts the parts together.

const lookEvery = 3000;  // milliseconds

// What rows are known by, also when the list changes: their identity, and how often it came before.
function uniqueKeys() {
  const seen = new Map();
  return (text) => {
    const times = seen.get(text) ?? 0;
    seen.set(text, times + 1);
    return times === 0 ? text : `${text}#${times}`;
  };
}

function rowOf(service, id, number, keyOf, entry = null) {
  const where = service ? [service.provider, service.transponder.network.name] : [id.text];
  return { key: keyOf(id.text), service, entry, number, name: service ? service.name || '(no name)' : 'no service',
           more: where.filter(Boolean).join(' · ') };
}

function showArranged(how) {
  const keyOf = uniqueKeys();
  const { view } = arranged;
  edits.left.show(view.rows.map((row) => rowOf(row.service, row.id, row.number, keyOf, row)), how);
  find('arranged-count').textContent = counted(view.rows.length, 'entry');
}

function showState(state) {
  const name = state.file.split('/').pop();
  document.title = `${state.is_saved ? '' : '• '}${name} – channel list`;
  find('file-name').textContent = name;
  find('file-name').title = state.file;
  find('file-state').textContent = state.is_saved ? 'saved' : 'not saved yet';
  find('undo').disabled = !state.can_undo;
  find('redo').disabled = !state.can_redo;
  find('save').disabled = state.is_saved;
  showFileChange(state);
  showDamage(state);
  showLeft(state);
}

function showFileChange({ is_file_changed: isChanged, file }) {
  notices.clear(isChanged ? '' : 'file');
  if (isChanged && !document.querySelector('.notice.file')) {
    notices.tell('file', `Somebody else wrote ${file} meanwhile. It is not overwritten.`,
                 notices.button('Compare…', compareFile),
                 notices.button('Go on from the new file', () => readAgain()));
  }
}

function showDamage({ damage, file, can_undo: isEdited }) {
  const isToBeSalvaged = damage !== null && !isEdited;
  notices.clear(isToBeSalvaged ? '' : 'damage');
  if (isToBeSalvaged && !document.querySelector('.notice.damage')) {
    notices.tell('damage', `${damage}. What is left of it can be salvaged.`,
                 notices.button('Salvage…', () => forms.open('salvage', { DAMAGED: { path: file } })));
  }
}

async function compareFile() {
  const { changes: lines } = await server.ask('changes-of-file', {});
  dialogs.ask({ title: 'What the other one changed', done: 'Go on from the new file', onDone: () => readAgain,
                body: [make('p', {}, 'What you did is done again on the new file.'),
                       make('div', { class: 'change-lines', tabindex: 0, role: 'region',
                                     'aria-label': 'What the other one changed' }, ...changes.elements(lines))] });
}

async function callWithFailures(name) {
  try {
    const { failures = [] } = await server.change(name);
    failures.forEach((failure) => notices.tell('error', `Could not be done again: ${failure}`));
  } catch (error) {
    notices.tell('error', error.message);
  }
}

const readAgain = () => callWithFailures('read-again');

function showLeft({ left }) {
  notices.clear(left ? '' : 'left');
  if (left && !document.querySelector('.notice.left')) {
    const fits = left.is_of_this_list ? '' : ' The file is another one since then.';
    notices.tell('left', `Not saved the last time: ${counted(left.steps, 'edit')}.${fits}`,
                 notices.button('Take them', () => callWithFailures('take-left')),
                 notices.button('Drop them', () => callWithFailures('drop-left')));
  }
}

function showList() {
  notices.clear('error', 'note');
  arranged.take(server.list, arranged.wanted);
  arranged.wanted = null;
  showArranged();
  search.take(arranged.model);
  changes.show();
}

function moveTo(rows, position) {
  const index = Math.min(Math.max(position, 1), arranged.view.rows.length) - 1;
  const isBehind = rows[0].entry && rows[0].entry.position < index;
  edits.place(rows, isBehind ? index + 1 : index);
}

const actions = {
  rename: () => edits.rename(),
  number: () => dialogs.number(),
  up: () => edits.step(-1),
  down: () => edits.step(1),
  place: () => dialogs.place(),
  add: () => dialogs.addTo(edits.chosen()),
  lock: () => edits.flag(locked, 'lock', 'unlock'),
  skip: () => edits.flag(skipped, 'skip', 'unskip'),
  remove: () => edits.remove(),
  sort: () => dialogs.sort(),
};

function showSelection() {
  const { size } = edits.active.selected;
  find('selected-count').textContent = size === 0 ? '' : `${grouped.format(size)} selected`;
}

function activate(pane) {
  edits.active = pane;
  showSelection();
}

// Digits, one after another, are a position; Enter goes there.
const typed = {
  digits: '',

  show(digits) {
    this.digits = digits;
    find('typed-number').hidden = digits === '';
    find('typed-number').textContent = `Move to position ${digits}: Enter`;
    clearTimeout(this.timer);
    this.timer = setTimeout(() => this.show(''), 4000);
    if (digits === '') {
      clearTimeout(this.timer);
    } else {
      say(`Move to position ${digits}`);
    }
  },

  onKey(event) {
    if (/^[0-9]$/.test(event.key)) {
      this.show(this.digits + event.key);
    } else if (this.digits !== '' && event.key === 'Backspace') {
      this.show(this.digits.slice(0, -1));
    } else if (this.digits !== '' && event.key === 'Escape') {
      this.show('');
    } else if (this.digits !== '' && event.key === 'Enter') {
      const position = Number(this.digits);
      this.show('');
      const rows = edits.chosen(edits.left);
      if (rows.length > 0) {
        moveTo(rows, position);
      }
    } else {
      return false;
    }
    return true;
  },
};

const keysOfLists = {
  F2: () => edits.rename(),
  Delete: () => edits.remove(),
  Enter: () => (edits.active === edits.right ? edits.addToShown() : edits.rename()),
  Insert: () => edits.active === edits.right && edits.addToShown(),
  '/': () => find('search').focus(),
  '?': () => dialogs.keys(),
};

const keysEverywhere = {
  z: ({ shiftKey }) => edits.turn(shiftKey ? 'redo' : 'undo'),
  y: () => edits.turn('redo'),
  s: () => edits.save(),
};

function onListKey(event) {
  const { key, altKey, ctrlKey, metaKey } = event;
  const isPlain = !altKey && !ctrlKey && !metaKey;
  if (isPlain && edits.active === edits.left && typed.onKey(event)) {
    event.preventDefault();
  } else if (altKey && (key === 'ArrowUp' || key === 'ArrowDown')) {
    event.preventDefault();
    edits.step(key === 'ArrowUp' ? -1 : 1);
  } else if (isPlain && Object.hasOwn(keysOfLists, key)) {
    event.preventDefault();
    keysOfLists[key]();
  }
}

function onAnyKey(event) {
  const isText = event.target.matches('input, textarea');
  const key = event.key.toLowerCase();
  if ((event.ctrlKey || event.metaKey) && !event.altKey && Object.hasOwn(keysEverywhere, key) &&
      (!isText || key === 's') && !find('dialog').open) {
    event.preventDefault();
    keysEverywhere[key](event);
  }
}

function startTools() {
  const tools = {
    undo: () => edits.turn('undo'),
    redo: () => edits.turn('redo'),
    save: () => edits.save(),
    'show-keys': () => dialogs.keys(),
    'show-forms': () => forms.offer(),
    'new-group': () => dialogs.newGroup(),
    'rename-group': () => dialogs.renameGroup(),
    'group-left': () => moveGroup(-1),
    'group-right': () => moveGroup(1),
    'show-arranged': () => showPane(false),
    'show-known': () => showPane(true),
    'delete-group': () => edits.group(['delete', arranged.wordForGroup(arranged.view)],
                                      `${arranged.view.title} deleted. Undo brings it back`),
  };
  for (const [id, click] of Object.entries(tools)) {
    find(id).addEventListener('click', click);
  }
  for (const button of find('actions').querySelectorAll('button')) {
    button.addEventListener('mousedown', (event) => event.preventDefault());  // the list keeps the focus
    button.addEventListener('click', () => actions[button.dataset.action]());
  }
}

// Where there is room for one list alone.
function showPane(isKnown) {
  document.body.classList.toggle('shows-known', isKnown);
  find('show-arranged').setAttribute('aria-pressed', `${!isKnown}`);
  find('show-known').setAttribute('aria-pressed', `${isKnown}`);
  (isKnown ? edits.right : edits.left).render();
  activate(isKnown ? edits.right : edits.left);
}

function moveGroup(by) {
  const { view } = arranged;
  const position = view.group + by;
  if (position < 1 || position > arranged.groups.length) {
    say(by < 0 ? 'First already' : 'Last already');
    return;
  }
  edits.group(['move', arranged.wordForGroup(view), '--to', `${position}`], `${view.title}: group ${position}`);
}

async function lookNowAndThen() {
  try {
    await server.look();
    notices.clear('gone');
  } catch {
    if (!document.querySelector('.notice.gone')) {
      notices.tell('gone', 'The program that serves this page has ended. What was done is kept: start `chlist edit` '
                           + 'again.');
    }
  }
}

function start() {
  const events = { marks, onActive: activate, onSelect: showSelection };
  edits.left = new Pane('arranged-list', { ...events, onAction: () => edits.rename(edits.left) });
  edits.right = new Pane('known-list', { ...events, onAction: () => edits.addToShown() });
  edits.active = edits.left;
  arranged.start();
  arranged.onShow = () => {
    showArranged({ keepsPlace: false });
    search.show();
  };
  search.start(edits.right);
  changes.start();
  drag.start();
  startTools();
  for (const pane of [edits.left, edits.right]) {
    pane.box.addEventListener('keydown', onListKey);
  }
  addEventListener('keydown', onAnyKey);
  addEventListener('beforeunload', (event) => {
    if (server.state && !server.state.is_saved) {
      event.preventDefault();
    }
  });
  server.onList = showList;
  server.onState = showState;
  server.load().then(() => server.state.notes.forEach((note) => notices.tell('note', note)));
  setInterval(lookNowAndThen, lookEvery);
}

start();
