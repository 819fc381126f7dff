// The generated parts of two documents: in README.md the figures, which come from docs/performance.md; in
// docs/clients.md the links that add the server to a client. Two comments with its name enclose each part.
//   node made_parts.mjs FOLDER      updates the documents in FOLDER

import { readFileSync, realpathSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

const name = 'halvane';

// Where each way of installing puts the program. A client needs the full path.
const installations = {
  'as a Debian package': '/usr/bin/halvane_mcp',
  'with Homebrew on a Mac with Apple silicon': '/opt/homebrew/bin/halvane_mcp',
};

// Pages of the clients' makers, which open the client on the reader's machine. A forge removes links with a client's
// own scheme.
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

// The rows of the page's tables by their names. Each row is an object: its values by the table's headings.
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
  const search = row('english-common');
  return [
    '| measure | result |',
    '| --- | --- |',
    `| search of 10,000 entries for a common word | ${search.ms} ms: ${search['x limit']} times reading the files, ` +
      `${search['x rg -j1']} times \`rg -i -l -F\` on one thread |`,
    `| slowest search of 10,000 English entries | ${value('search, 10,000 English entries')} times reading the files |`,
    `| slowest search of 10,000 entries in seven languages | ` +
      `${value('search, 10,000 entries in seven languages')} times reading the files |`,
    `| time from start to first answer | ` +
      `${value('start of the process to its first reply')} times a C++ program that prints one line |`,
    `| memory while it waits, after searches | ${value('idle memory after searches, all')} MB, of which ` +
      `${value('idle memory after searches, anonymous')} MB are not shared with a file |`,
  ].join('\n');
}

function fail(trouble) {
  throw new Error(trouble);
}

const begin = (what) => `<!-- ${what}: begin -->\n`;
const end = (what) => `\n<!-- ${what}: end -->`;

/// The text between the two comments that name `what`.
export function part(document, what) {
  const [, after] = document.split(begin(what));
  const [inside, rest] = (after ?? fail(`There is no place for the ${what}.`)).split(end(what));
  return rest === undefined ? fail(`The ${what} have no end.`) : inside;
}

function withPart(document, what, content) {
  const enclosed = (inside) => begin(what) + inside + end(what);
  return document.replace(enclosed(part(document, what)), () => enclosed(content));
}

/// README.md with the figures of `page`, the text of docs/performance.md.
export const withFigures = (readme, page) => withPart(readme, 'figures', figures(page));

/// docs/clients.md with its links.
export const withLinks = (document) => withPart(document, 'install links', links());

if (process.argv[1] && realpathSync(process.argv[1]) === fileURLToPath(import.meta.url)) {
  const [, , folder] = process.argv;
  const update = (name, made) => {
    const path = join(folder, name);
    writeFileSync(path, made(readFileSync(path, 'utf8')));
  };
  const page = readFileSync(join(folder, 'docs/performance.md'), 'utf8');
  update('README.md', (readme) => withFigures(readme, page));
  update('docs/clients.md', withLinks);
}
