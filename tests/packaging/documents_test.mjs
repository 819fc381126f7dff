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

test('The index of docs/ links to each document there', () => {
  const index = join(source, 'docs/README.md');
  const linked = linkedFrom(index);
  assert.deepEqual(documentsIn(join(source, 'docs')).filter((path) => path !== index && !linked.has(path)), []);
});

test('README.md links to the index', () => {
  assert.ok(linkedFrom(join(source, 'README.md')).has(join(source, 'docs/README.md')));
});

test('docs/troubleshooting.md quotes the doctor as it speaks', () => {
  const [, table] = readFileSync(join(source, 'docs/troubleshooting.md'), 'utf8').split('| the doctor says | what to do |\n| --- | --- |\n');
  const quotes = table.split('\n\n')[0].split('\n').map((row) => row.split('|')[1].trim());
  const words = readFileSync(join(source, 'doctor/report.cpp'), 'utf8');
  assert.equal(quotes.length, 7);
  for (const quote of quotes) assert.ok(words.includes(quote), quote);
});

const prefix = temporaryFolder();
execFileSync('cmake', ['--install', build, '--prefix', prefix]);
const [installed] = readdirSync(join(prefix, 'share/doc')).map((name) => join(prefix, 'share/doc', name));

test('The index and the changes are installed', () => {
  for (const name of ['README.md', 'CHANGELOG.md']) assert.ok(existsSync(join(installed, name)), name);
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
