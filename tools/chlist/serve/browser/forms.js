// Edits of the whole list. What they take is asked in a form, which is made of what the command line takes; what they
// would do is shown before it is done.

const partOfFile = 2 << 20;  // bytes that are sent at once

function base64(bytes) {
  let text = '';
  for (let at = 0; at < bytes.length; at += 0x8000) {
    text += String.fromCharCode(...bytes.subarray(at, at + 0x8000));
  }
  return btoa(text);
}

// Where the server has it.
async function sent(file) {
  let at = 0;
  let path = '';
  do {
    const bytes = new Uint8Array(await file.slice(at, at + partOfFile).arrayBuffer());
    ({ path } = await server.ask('take-file', { name: file.name, at, bytes: base64(bytes) }));
    at += bytes.length;
  } while (at < file.size);
  return path;
}

const sentence = (text) => text.charAt(0).toUpperCase() + text.slice(1);

// What is told of an option goes on from its name: "Prefer: what stays, words with commas between them".
const question = ({ name, about }) => sentence(`${name.replace(/^-+/, '').replaceAll('-', ' ')}: ${about}`);

// What each kind of option is asked by, and the value that the form's fields have for it.
const askedBy = {
  file: {
    field: ({ name, about, stands_for: word }, { path = '', isTyped = false }) => make('fieldset',
      { class: 'file-field' }, make('legend', {}, `${word}: ${about}`),
      make('input', { type: 'file', name: `${name} chosen`, 'aria-label': 'A file of this machine' }),
      dialogs.field('or its path', name, { value: path, autocomplete: 'off', spellcheck: 'false' }),
      isTyped ? make('label', { class: 'field' }, make('span', {}, 'or its text'),
                     make('textarea', { name: `${name} typed`, rows: 4, spellcheck: 'false' })) : ''),
    value: async (name, fields) => {
      const [chosen] = fields[`${name} chosen`].files;
      const typed = fields[`${name} typed`]?.value;
      return chosen ? sent(chosen) : typed ? sent(new File([typed], 'typed.txt')) : fields[name].value;
    },
  },
  flag: {
    field: ({ name, about }) => make('label', { class: 'choice' }, make('input', { type: 'checkbox', name }),
                                     sentence(about)),
    value: (name, fields) => fields[name].checked,
  },
  choice: {
    field: ({ name, choices, value, ...more }) => make('label', { class: 'field' },
      make('span', {}, question({ name, ...more })), make('select', { name }, ...choices.map(([word, meaning]) =>
        make('option', { value: word, selected: word === value }, meaning ? `${word}: ${meaning}` : word)))),
    value: (name, fields) => fields[name].value,
  },
  text: {
    field: (option) => dialogs.field(question(option), option.name, { value: option.value, autocomplete: 'off',
                                                                      spellcheck: 'false' }),
    value: (name, fields) => fields[name].value,
  },
};

const forms = {
  // only: the options that are asked for, when it is not all of them; how: more of the way in which some are asked.
  offered: {
    order: { title: 'Order like another list…' },
    duplicates: { title: 'Find duplicates…' },
    renumber: { title: 'Number by a plan…', only: ['--plan'], how: { '--plan': { isTyped: true } } },
    merge: { title: 'Merge a new scan…' },
    salvage: { title: 'Salvage a damaged file…' },
  },

  offer() {
    dialogs.ask({ title: 'The whole list', body: Object.entries(this.offered).map(([edit, { title }]) =>
      make('button', { type: 'button', class: 'tool', 'data-edit': edit, click: () => this.open(edit) }, title)) });
  },

  async open(edit, how = {}) {
    try {
      const { only, how: always } = this.offered[edit];
      const form = await server.ask('form', { edit });
      const options = form.options.filter(({ name }) => !only || only.includes(name));
      this.show(edit, { ...form, options }, { ...always, ...how });
    } catch (error) {
      notices.tell('error', error.message);
    }
  },

  show(edit, { summary, details, options, sections }, how) {
    const asked = options.map((option) => askedBy[option.kind].field(option, how[option.name] ?? {}));
    const about = make('details', {}, make('summary', {}, 'How it works'),
      ...details.map((text) => make('p', { class: 'hint' }, text)), ...sections.map((each) => this.terms(each)));
    dialogs.ask({ title: summary, body: [...asked, about], done: 'Preview…', onDone: async (fields) => {
      const words = await this.words(edit, options, fields);
      return changes.preview({ edits: [words] });
    } });
  },

  terms: ({ title, terms }) => make('section', {}, make('h3', {}, title), make('dl', { class: 'keys' },
    ...terms.flatMap(([word, meaning]) => [make('dt', {}, word), make('dd', {}, meaning)]))),

  // Options that are as they were are left out.
  async words(edit, options, fields) {
    const words = [edit];
    const names = [];
    for (const { name, kind, value: unchanged, is_argument: isArgument, is_required: isRequired, about } of options) {
      const value = await askedBy[kind].value(name, fields);
      if (isRequired && !value) {
        throw new Error(`${sentence(about)}: which one?`);
      }
      if (value && value !== unchanged) {
        (isArgument ? names : words).push(...(isArgument ? [] : [name]), ...(value === true ? [] : [value]));
      }
    }
    return names.length > 0 ? [...words, '--', ...names] : words;
  },
};
