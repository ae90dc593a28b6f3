// What differs from the file, as a dry run shows it, and the edit lines that make it so.

const changes = {
  start() {
    find('show-changes').addEventListener('click', () => this.open(find('changes').hidden));
    find('close-changes').addEventListener('click', () => this.open(false));
    find('copy-lines').addEventListener('click', () => this.copy());
    find('typed').addEventListener('submit', (event) => {
      event.preventDefault();
      this.preview(find('typed-lines').value);
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

  elements: (lines) => lines.map(([depth, text]) => make('p', { class: `depth-${depth}`, dir: 'auto' }, text)),

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
  async preview(text) {
    find('typed-error').textContent = '';
    try {
      const { chosen, notes, tables, changes: lines } = await server.ask('preview', { text });
      const told = chosen === null ? [] : [make('p', {}, `${counted(chosen, 'service')} chosen`)];
      dialogs.ask({ title: 'What would change', done: 'Apply',
                    body: [...told, ...notes.map((note) => make('p', { dir: 'auto' }, note)),
                           ...tables.map((table) => make('pre', { class: 'table', dir: 'auto' }, table)),
                           make('div', { class: 'change-lines', tabindex: 0, role: 'region',
                                         'aria-label': 'What would change' }, ...this.elements(lines))],
                    onDone: () => this.apply(text) });
    } catch (error) {
      find('typed-error').textContent = error.message;
    }
  },

  async apply(text) {
    try {
      await server.change('edit', () => ({ text }));
      find('typed-lines').value = '';
      say('Done');
    } catch (error) {
      find('typed-error').textContent = error.message;
    }
  },
};
