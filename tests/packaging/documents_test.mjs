// The documents, in the repository and as they are installed: their links lead to files.
//   node documents_test.mjs SOURCE BUILD

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { existsSync, readFileSync, readdirSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { test } from 'node:test';
import { temporaryFolder } from './conversation.mjs';
import { documentAt } from './document.mjs';

const [, , source, build] = process.argv;

const documentsIn = (folder) => readdirSync(folder).filter((name) => name.endsWith('.md')).map((name) => join(folder, name));

// A page of the forge beside the repository, such as its releases, is no file.
const isPageOfForge = (address) => address.startsWith('../../');

const brokenLinks = (path) => documentAt(path).links
  .filter((address) => !isPageOfForge(address) && !existsSync(join(dirname(path), address)));

const folders = ['', 'docs', 'packaging', 'fuzz', 'tests/vectors', '.github', '.github/ISSUE_TEMPLATE'];
for (const path of folders.flatMap((folder) => documentsIn(join(source, folder)))) {
  test(`The links of ${path} lead to files`, () => assert.deepEqual(brokenLinks(path), []));
}

const linkedFrom = (index) => new Set(documentAt(index).links.map((address) => join(dirname(index), address)));

test('README.md, CONTRIBUTING.md and the index lead to each document in docs/', () => {
  const linked = new Set(['README.md', 'CONTRIBUTING.md', 'docs/README.md'].flatMap((name) => [...linkedFrom(join(source, name))]));
  assert.deepEqual(documentsIn(join(source, 'docs')).filter((path) => !linked.has(path)), []);
});

test('docs/troubleshooting.md quotes each reason that the doctor gives for a file, and no other', () => {
  const [, table] = readFileSync(join(source, 'docs/troubleshooting.md'), 'utf8').split('| the doctor says | what to do |\n| --- | --- |\n');
  const quotes = table.split('\n\n')[0].split('\n').map((row) => row.split('|')[1].trim());
  const words = readFileSync(join(source, 'doctor/report_content.cpp'), 'utf8');
  const reasons = [...words.matchAll(/return "(.*?)(: "|")/g)].map(([, reason]) => reason);
  assert.ok(reasons.length > 10);
  const begin = (quote) => quote.replace(/(can't be read): .*/, '$1');  // the system says the rest
  for (const reason of reasons) assert.ok(quotes.some((quote) => reason.includes(begin(quote))), reason);
  for (const quote of quotes) assert.ok(reasons.some((reason) => reason.includes(begin(quote))), quote);
});

const prefix = temporaryFolder();
execFileSync('cmake', ['--install', build, '--prefix', prefix]);
const [installed] = readdirSync(join(prefix, 'share/doc')).map((name) => join(prefix, 'share/doc', name));

test('The changes, the index and what the index leads to are installed, and no other document', () => {
  const index = join(installed, 'README.md');
  assert.deepEqual(documentsIn(installed).sort(), [...linkedFrom(index), index, join(installed, 'CHANGELOG.md')].sort());
});

for (const path of documentsIn(installed)) {
  const name = path.slice(installed.length + 1);
  test(`The links of the installed ${name} lead to installed files`, () => {
    assert.deepEqual(documentAt(path).links.filter((address) => !existsSync(join(installed, address))), []);
  });
}

test('A link that leads nowhere would be noticed', () => {
  const path = join(prefix, 'faulty.md');
  writeFileSync(path, '[here](faulty.md), [there](gone.md#part), ![a picture](gone.svg), [far](https://example.org/gone)\n');
  assert.deepEqual(brokenLinks(path), ['gone.md', 'gone.svg']);
});
