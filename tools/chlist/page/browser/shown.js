// What is shown, taken elsewhere: to the clipboard, into a table of another program, onto paper.

async function copyText(text) {
  const isCopied = await navigator.clipboard.writeText(text).then(() => true, () => false);
  find('live').textContent = isCopied ? 'Copied' : 'This browser does not let the page copy';
}

const textOf = (column, row) => (column.text ? column.text(row) : `${(column.show ?? column.value)(row) ?? ''}`);
const plainOf = (column, row) => (column.isNumber && !column.show ? textOf(column, row)
  : column.key === 'frequency' ? `${row.id.frequency}` : textOf(column, row));

const shownLines = () => [columns.map(({ title }) => title),
                          ...table.rows.map((row) => columns.map((column) => plainOf(column, row)))];

const inCell = (text) => text.replace(/[\t\r\n]/g, ' ');
const inQuotes = (text) => (/[",\r\n]/.test(text) ? `"${text.replaceAll('"', '""')}"` : text);
const tabbed = (lines) => lines.map((cells) => cells.map(inCell).join('\t')).join('\n');
const commaSeparated = (lines) => lines.map((cells) => `${cells.map(inQuotes).join(',')}\r\n`).join('');

function saveText(name, type, text) {
  const address = URL.createObjectURL(new Blob([text], { type }));
  make('a', { href: address, download: name }).click();
  setTimeout(() => URL.revokeObjectURL(address), 1000);
}

const printedColumns = ['number', 'name', 'type', 'provider', 'marks', 'network', 'frequency', 'polarisation', 'ts',
                        'service'];

// A plain table of all rows that are shown: what a page has on the screen is no good on paper.
const paper = {
  fill() {
    const chosen = columns.filter(({ key }) => printedColumns.includes(key));
    const cells = (tag, valueOf) => chosen.map((column) =>
      make(tag, { class: column.isNumber ? 'number' : null }, valueOf(column)));
    const body = make('tbody');
    appendAll(body, table.rows.map((row) => make('tr', {}, ...cells('td', (column) => textOf(column, row)))));
    find('paper').replaceChildren(make('table', {}, make('caption', {}, `${views[currentView].title}: `,
      find('shown-count').textContent), make('thead', {}, make('tr', {}, ...cells('th', ({ title }) => title))), body));
  },

  clear() {
    find('paper').replaceChildren();
  },
};

function startTaking() {
  find('copy').addEventListener('click', () => copyText(tabbed(shownLines())));
  find('csv').addEventListener('click', () =>
    saveText(`${data.file.name}-${views[currentView].title}.csv`, 'text/csv', commaSeparated(shownLines())));
  addEventListener('beforeprint', () => paper.fill());
  addEventListener('afterprint', () => paper.clear());
}
