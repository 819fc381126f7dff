// The parts of README.md that are made from something else: the links that install the server into a client, and the
// figures of docs/performance.md. Each stands between two comments that name it.
//   node made_parts.mjs FOLDER      makes them anew in FOLDER/README.md

import { readFileSync, realpathSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

const name = 'halvane';

// Where each way of installing puts the program. A client needs the whole path.
const installations = {
  'by package': '/usr/bin/halvane_mcp',
  'by Homebrew on macOS': '/opt/homebrew/bin/halvane_mcp',
};

// A page at the client's maker that hands its address on to the client on this machine: an address of the client's own
// would not survive on a page of a forge.
const clients = {
  Cursor: (command) => {
    const config = Buffer.from(JSON.stringify({ command })).toString('base64');
    return `https://cursor.com/install-mcp?name=${name}&config=${encodeURIComponent(config)}`;
  },
  'VS Code': (command) => {
    const config = JSON.stringify({ type: 'stdio', command });
    return `https://vscode.dev/redirect/mcp/install?name=${name}&config=${encodeURIComponent(config)}`;
  },
};

function links() {
  const ofInstallation = ([installed, command]) =>
    `| ${installed} | ${Object.entries(clients).map(([client, link]) => `[${client}](${link(command)})`).join(' | ')} |`;
  return [
    `| installed | ${Object.keys(clients).map((client) => `add to ${client}`).join(' | ')} |`,
    `| --- |${' --- |'.repeat(Object.keys(clients).length)}`,
    ...Object.entries(installations).map(ofInstallation),
  ].join('\n');
}

// The rows of the tables on the page, each with what its table's headings call its values.
function rowsOf(page) {
  const rows = new Map();
  let headings = [];
  for (const line of part(page, 'figures').split('\n')) {
    const cells = line.split('|').slice(1, -1).map((cell) => cell.trim());
    if (cells.length === 0) headings = [];
    else if (headings.length === 0) headings = cells;
    else rows.set(cells[0], Object.fromEntries(headings.map((heading, at) => [heading, cells[at]])));
  }
  return rows;
}

function figures(page) {
  const rows = rowsOf(page);
  const row = (measure) => rows.get(measure) ?? fail(`docs/performance.md has no row called "${measure}".`);
  const value = (measure) => row(measure).value;
  const times = (number) => `${number} times`;
  const search = row('english-common');
  return [
    '| what | costs | beside |',
    '| --- | --- | --- |',
    `| a search through 10,000 entries for a common word | ${search.ms} ms | ` +
      `${times(search['x limit'])} what only reading the files takes, ${times(search['x rg -j1'])} \`rg -i -l -F\` |`,
    `| the worst of all such searches, in English | | ${times(value('search, 10,000 English entries'))} only reading |`,
    `| the same in seven languages | | ${times(value('search, 10,000 entries in seven languages'))} only reading |`,
    `| the start, up to the first answer | | ` +
      `${times(value('start of the process to its first reply'))} a C++ program that prints a line |`,
    `| memory while it waits, after searches | ${value('idle memory after searches, all')} MB | of which its own, ` +
      `not shared with a file: ${value('idle memory after searches, anonymous')} MB |`,
  ].join('\n');
}

function fail(trouble) {
  throw new Error(trouble);
}

const begin = (what) => `<!-- ${what}: begin -->\n`;
const end = (what) => `\n<!-- ${what}: end -->`;

/// What stands between the two comments that name `what`.
export function part(document, what) {
  const [, behind] = document.split(begin(what));
  const [inside, rest] = (behind ?? fail(`There is no place for the ${what}.`)).split(end(what));
  return rest === undefined ? fail(`The ${what} have no end.`) : inside;
}

/// The document with these parts made anew.
export function withMadeParts(readme, page) {
  const made = { 'install links': links(), figures: figures(page) };
  return Object.entries(made).reduce((document, [what, content]) => {
    const before = part(document, what);
    return document.replace(begin(what) + before + end(what), () => begin(what) + content + end(what));
  }, readme);
}

if (process.argv[1] && realpathSync(process.argv[1]) === fileURLToPath(import.meta.url)) {
  const [, , folder] = process.argv;
  const readme = join(folder, 'README.md');
  const page = readFileSync(join(folder, 'docs/performance.md'), 'utf8');
  writeFileSync(readme, withMadeParts(readFileSync(readme, 'utf8'), page));
}
