// What differs from the file, as a dry run shows it, and the edit lines that make it so.

const firstLines = 1000;

const changes = {
  start() {
    find('show-changes').addEventListener('click', () => this.open(find('changes').hidden));
    find('close-changes').addEventListener('click', () => this.open(false));
    find('copy-lines').addEventListener('click', () => this.copy());
    find('typed').addEventListener('submit', (event) => {
      event.preventDefault();
      this.previewTyped(find('typed-lines').value);
    });
  },

  open(isOpen) {
    find('changes').hidden = !isOpen;
    find('show-changes').setAttribute('aria-expanded', `${isOpen}`);
    this.show();
    (isOpen ? find('changes-title') : find('show-changes')).focus();
  },

  async show() {
    if (find('changes').hidden) {
      return;
    }
    const { changes: lines, lines: text } = await server.ask('changes', {});
    find('change-lines').replaceChildren(...this.elements(lines));
    find('edit-lines').value = text;
  },

  // Of many lines the first, and the others on demand.
  elements(lines, from = 0) {
    const shown = lines.slice(from, from + firstLines).map(([depth, text]) =>
      make('p', { class: `depth-${depth}`, dir: 'auto' }, text));
    const left = lines.length - from - shown.length;
    return left === 0 ? shown : [...shown, make('button', { type: 'button', class: 'quiet', click: (event) =>
      event.target.replaceWith(...this.elements(lines, from + firstLines)) }, `${counted(left, 'more line')}`)];
  },

  async copy() {
    find('edit-lines').select();
    try {
      await navigator.clipboard.writeText(find('edit-lines').value);
      say('Copied');
    } catch {
      say('Selected: copy it with Ctrl C');
    }
  },

  // Lines that are typed are shown before they are done: a condition may choose more than somebody thinks.
  async previewTyped(text) {
    find('typed-error').textContent = '';
    try {
      (await this.preview({ text }, () => { find('typed-lines').value = ''; }))();
    } catch (error) {
      find('typed-error').textContent = error.message;
    }
  },

  // Throws what is wrong with the edits; returns what shows them.
  async preview(body, onApplied = () => {}) {
    const { chosen, notes, tables, is_changed: isChanged, changes: lines } = await server.ask('preview', body);
    const chosenLine = chosen === null ? [] : [make('p', {}, `${counted(chosen, 'service')} chosen`)];
    const region = { class: 'change-lines', tabindex: 0, role: 'region', 'aria-label': 'What would change' };
    const shown = isChanged ? make('div', region, ...this.elements(lines)) : make('p', {}, 'Nothing changes.');
    const ask = { title: 'What would change', isWide: true,
                  body: [...chosenLine, ...notes.map((note) => make('p', { class: 'note', dir: 'auto' }, note)),
                         ...tables.map((table) => make('pre', { class: 'table', dir: 'auto', tabindex: 0 }, table)),
                         shown] };
    return () => dialogs.ask(!isChanged ? ask : { ...ask, done: 'Apply', onDone: async () => {
      await server.change('edit', () => body);
      onApplied();
      say('Done');
    } });
  },
};
