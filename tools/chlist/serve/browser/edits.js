// What somebody does, as edit lines: the words of `chlist apply`. The server does them; nothing is done here.

const namesOf = (rows) => rows.map((row) => row.service.id.text);
const called = (rows) => (rows.length === 1 ? rows[0].name || 'A service' : counted(rows.length, 'service'));

const edits = {
  left: null,   // the panes
  right: null,
  active: null,

  // linesOf: made when those before it are done; none: there is nothing to do. The message tells people what cannot be
  // seen. Returns whether something was done.
  async run(linesOf, message) {
    try {
      const answer = await server.change('edit', () => {
        const lines = linesOf();
        return lines.length > 0 ? { edits: lines } : null;
      });
      if (answer) {
        say([message(), ...answer.notes].join('. '));
        answer.notes.forEach((note) => notices.tell('note', note));
      }
      return answer !== null;
    } catch (error) {
      notices.tell('error', error.message);
      return false;
    }
  },

  // Entries whose service is not in the list cannot be named.
  chosen(pane = this.active) {
    const rows = pane.selection.filter((row) => row.service);
    if (rows.length === 0 && pane.selection.length > 0) {
      notices.tell('error', 'This entry has no service in the list: nothing can be done with it here.');
    }
    return rows;
  },

  // In the words of either: a group has moves of its own.
  moveLine(view, rows, place) {
    const words = view.isFavourites ? ['fav', 'move', arranged.wordForGroup(view), ...namesOf(rows)]
                                    : ['move', ...namesOf(rows), '--view', arranged.wordForView(view)];
    return [...words, ...place];
  },

  // The place in front of an index of the view, told by a neighbour that stays where it is.
  placeAt(view, index, moved) {
    const isMoved = new Set(namesOf(moved));
    const stays = (row) => row.service && !isMoved.has(row.service.id.text);
    const behind = view.rows.slice(index).find(stays);
    if (behind) {
      return ['--before', behind.service.id.text];
    }
    const before = view.rows.slice(0, index).findLast(stays);
    return before ? ['--after', before.service.id.text] : ['--to', '1'];
  },

  // To a place of the view that is shown, from either side. What a group does not have comes into it.
  place(rows, index) {
    const { view } = arranged;
    const lines = () => {
      const missing = view.isFavourites ? this.missingIn(arranged.view, rows) : [];
      const isAtEnd = missing.length === rows.length && index >= arranged.view.rows.length;
      const added = missing.length > 0 ? [['fav', 'add', arranged.wordForGroup(view), ...namesOf(missing)]] : [];
      return isAtEnd ? added : [...added, this.moveLine(arranged.view, rows, this.placeAt(arranged.view, index, rows))];
    };
    const whereTo = () => arranged.view.rows.findIndex((row) => row.service?.id.text === namesOf(rows)[0]) + 1;
    return this.run(lines, () => `${called(rows)}: position ${whereTo()} of ${arranged.view.rows.length}`);
  },

  missingIn(view, rows) {
    const there = new Set(view.rows.map((row) => row.service?.id.text));
    return rows.filter((row) => !there.has(row.service.id.text));
  },

  step(by) {
    const rows = this.chosen(this.left);
    if (rows.length === 0) {
      return;
    }
    const keys = new Set(rows.map((row) => row.service.id.text));
    const lines = () => {
      const all = arranged.view.rows;
      const places = all.map((row, i) => [row, i]).filter(([row]) => keys.has(row.service?.id.text)).map(([, i]) => i);
      const neighbour = by < 0 ? all.slice(0, places[0]).findLast((row) => row.service)
                               : all.slice(places.at(-1) + 1).find((row) => row.service);
      return neighbour
        ? [this.moveLine(arranged.view, rows, [by < 0 ? '--before' : '--after', neighbour.service.id.text])] : [];
    };
    const place = () => arranged.view.rows.findIndex((row) => keys.has(row.service?.id.text)) + 1;
    this.run(lines, () => `${called(rows)}: position ${place()} of ${arranged.view.rows.length}`).then((isDone) => {
      if (!isDone) {
        say(by < 0 ? 'First already' : 'Last already');
      }
    });
  },

  rename(pane = this.active) {
    const [row] = this.chosen(pane);
    if (row) {
      pane.edit(row, (name) => this.run(() => [['rename', row.service.id.text, name]], () => `Renamed to ${name}`));
    }
  },

  remove(pane = this.active) {
    const rows = this.chosen(pane);
    const { view } = arranged;
    if (rows.length === 0) {
      return;
    }
    if (pane === this.left && view.isFavourites) {
      this.run(() => [['fav', 'remove', arranged.wordForGroup(view), ...namesOf(rows)]],
               () => `${called(rows)} removed from ${view.title}`);
    } else {
      this.run(() => [['remove', ...namesOf(rows)]],
               () => `${called(rows)} removed from the list. Undo brings it back`);
    }
  },

  // When all have it, it is taken away.
  flag(bit, set, unset) {
    const rows = this.chosen();
    const word = rows.every((row) => row.service.flag & bit) ? unset : set;
    if (rows.length > 0) {
      this.run(() => [[word, ...namesOf(rows)]], () => `${called(rows)}: ${word}`);
    }
  },

  number(rows, first, policy) {
    const word = arranged.wordForView(arranged.view);
    const options = policy === 'refuse' ? [] : [`--${policy}`];
    this.run(() => namesOf(rows).map((name, i) => ['renumber', name, `${first + i}`, '--view', word, ...options]),
             () => `${called(rows)}: number ${first}`);
  },

  add(view, rows) {
    const missing = this.missingIn(view, rows);
    if (missing.length === 0) {
      say(`${called(rows)} is in ${view.title} already`);
    } else {
      this.run(() => [['fav', 'add', arranged.wordForGroup(view), ...namesOf(missing)]],
               () => `${called(missing)} added to ${view.title}`);
    }
  },

  addToShown() {
    if (arranged.view.isFavourites) {
      this.add(arranged.view, this.chosen(this.right));
    } else {
      dialogs.addTo(this.chosen(this.right));
    }
  },

  group(words, message) {
    return this.run(() => [['fav', ...words]], () => message);
  },

  sort(key) {
    const { view } = arranged;
    this.run(() => [['sort', '--by', key, '--view', arranged.wordForView(view)]],
             () => `${view.title} sorted by ${key}`);
  },

  renumberView(from) {
    const { view } = arranged;
    this.run(() => [['renumber', '--from', `${from}`, '--view', arranged.wordForView(view)]],
             () => `${view.title} numbered from ${from}`);
  },

  async turn(name) {
    try {
      await server.change(name);
      say(name === 'undo' ? 'Undone' : 'Done again');
    } catch (error) {
      notices.tell('error', error.message);
    }
  },

  async save() {
    try {
      await server.change('save');
      say('Saved');
    } catch (error) {
      notices.tell('error', error.message);
    }
  },
};
