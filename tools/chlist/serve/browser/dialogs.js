// Questions, and what people are told beside the lists.

const say = (text) => {
  find('live').textContent = text;
};

const notices = {
  // One of each text; errors and notes go when the next edit is done, or when they are closed.
  tell(kind, text, ...buttons) {
    const same = [...find('notices').children].find((each) => each.dataset.text === text);
    same?.remove();
    const notice = make('div', { class: `notice ${kind}`, 'data-text': text, 'data-kind': kind,
                                 role: kind === 'error' ? 'alert' : 'status' },
                        make('span', { dir: 'auto' }, text), ...buttons);
    notice.append(make('button', { type: 'button', class: 'quiet', 'aria-label': 'Close this message',
                                   click: () => notice.remove() }, '✕'));
    find('notices').append(notice);
    return notice;
  },

  button: (text, click) => make('button', { type: 'button', class: 'tool', click }, text),

  clear(...kinds) {
    [...find('notices').children].filter((each) => kinds.includes(each.dataset.kind)).forEach((each) => each.remove());
  },
};

const dialogs = {
  // onDone is given the form's fields, and may refuse by throwing what is told then. When it returns a function, that
  // is what comes when the dialog is closed.
  ask({ title, body = [], done, onDone, isWide = false }) {
    const box = find('dialog');
    box.classList.toggle('wide', isWide);
    find('dialog-title').textContent = title;
    find('dialog-body').replaceChildren(...body);
    find('dialog-error').textContent = '';
    const close = make('button', { type: 'button', class: 'tool', click: () => box.close() },
                       done ? 'Cancel' : 'Close');
    find('dialog-buttons').replaceChildren(close);
    if (done) {
      find('dialog-buttons').append(make('button', { type: 'submit', class: 'tool main-tool' }, done));
    }
    find('dialog-form').onsubmit = (event) => {
      event.preventDefault();
      this.finish(onDone);
    };
    if (!box.open) {
      box.showModal();
    }
    (find('dialog-body').querySelector('input, select, button, [tabindex]') ?? close).focus();
    box.scrollTop = 0;
  },

  async finish(onDone) {
    const submit = find('dialog-buttons').querySelector('[type=submit]');
    find('dialog-error').textContent = '';
    submit.disabled = true;
    try {
      const next = await onDone?.(find('dialog-form').elements);
      find('dialog').close();
      next?.();
    } catch (error) {
      find('dialog-error').textContent = error.message;
    }
    submit.disabled = false;
  },

  field(label, name, attributes) {
    return make('label', { class: 'field' }, make('span', {}, label), make('input', { name, ...attributes }));
  },

  choices(title, name, values) {
    return make('fieldset', {}, make('legend', {}, title), ...values.map(([value, text], i) =>
      make('label', { class: 'choice' }, make('input', { type: 'radio', name, value, checked: i === 0 }), text)));
  },

  newGroup(thenAdd = null) {
    this.ask({ title: 'New favourite group', body: [this.field('Name', 'name', { required: true, maxlength: 95 })],
               done: 'Make it', onDone: ({ name: { value } }) => async () => {
                 const rows = thenAdd ?? [];
                 const added = rows.length > 0 ? [['fav', 'add', value, ...namesOf(rows)]] : [];
                 if (await edits.run(() => [['fav', 'new', value], ...added], () => `Group ${value} made`)) {
                   arranged.choose(arranged.views.findIndex((view) => view.isFavourites && view.title === value));
                 }
               } });
  },

  renameGroup() {
    const { view } = arranged;
    this.ask({ title: `Rename ${view.title}`,
               body: [this.field('Name', 'name', { required: true, maxlength: 95, value: view.title, dir: 'auto' })],
               done: 'Rename', onDone: ({ name: { value } }) => async () => {
                 arranged.wanted = value;
                 await edits.group(['rename', arranged.wordForGroup(view), value], `Renamed to ${value}`);
               } });
  },

  addTo(rows) {
    if (rows.length === 0) {
      return;
    }
    if (arranged.groups.length === 0) {
      this.newGroup(rows);
      return;
    }
    const groups = arranged.groups.map((view) => [`${view.group}`, view.title]);
    this.ask({ title: `Add ${called(rows)} to`, body: [this.choices('Favourite group', 'group', [...groups,
               ['new', 'A new group…']])], done: 'Add', onDone: ({ group: { value } }) => {
      if (value === 'new') {
        return () => this.newGroup(rows);
      }
      edits.add(arranged.groups.find((view) => `${view.group}` === value), rows);
      return null;
    } });
  },

  place() {
    const rows = edits.chosen(edits.left);
    if (rows.length > 0) {
      const most = arranged.view.rows.length;
      this.ask({ title: `Move ${called(rows)}`, done: 'Move',
                 body: [this.field(`To position, 1 to ${most}`, 'place', { type: 'number', min: 1, max: most,
                                                                          required: true })],
                 onDone: ({ place }) => { moveTo(rows, place.valueAsNumber); } });
    }
  },

  number() {
    const rows = edits.chosen(edits.left);
    if (rows.length > 0) {
      this.ask({ title: `Number of ${called(rows)} in ${arranged.view.title}`, done: 'Number', body: [
        this.field(rows.length > 1 ? 'Numbers from' : 'Number', 'number',
                   { type: 'number', min: 1, max: 32767, required: true, value: rows[0].entry?.major || null }),
        this.choices('What has the number already', 'policy', [['refuse', 'keeps it: nothing is done'],
                     ['swap', 'gets the number of this one'], ['shift', 'moves up, and so on']])],
                 onDone: ({ number, policy }) => { edits.number(rows, number.valueAsNumber, policy.value); } });
    }
  },

  sort() {
    const keys = [['name', 'name'], ['number', 'number'], ['transponder', 'transponder'], ['service_id', 'service id'],
                  ['order_key', 'order key']];
    this.ask({ title: `Sort ${arranged.view.title}`, done: 'Sort', body: [
      this.choices('By', 'key', keys),
      make('p', {}, make('button', { type: 'button', class: 'tool', click: () => {
        find('dialog').close();
        edits.renumberView(1);
      } }, 'Number it from 1 in this order instead'))], onDone: ({ key }) => { edits.sort(key.value); } });
  },

  keys() {
    const rows = [['Arrows, Page Up, Page Down, Home, End', 'move in a list; with Shift they select'],
                  ['Space', 'selects a row'], ['Ctrl A, Escape', 'select all, none'],
                  ['Alt ↑, Alt ↓', 'move the selected'], ['digits, Enter', 'move the selected to that position'],
                  ['F2, Enter', 'rename'], ['Delete', 'remove from the group, or from the list'],
                  ['Enter, Insert', 'in all services: add to the group'], ['Ctrl Z, Ctrl Y', 'undo, redo'],
                  ['Ctrl S', 'save'], ['/', 'search']];
    this.ask({ title: 'Keys', body: [make('dl', { class: 'keys' }, ...rows.flatMap(([key, what]) =>
      [make('dt', {}, key), make('dd', {}, what)]))] });
  },
};
