// README.md and docs/clients.md say what the program, its packages and other documents say.
//   node readme_test.mjs SOURCE SERVER

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { part, withFigures, withLinks } from '../../packaging/readme/made_parts.mjs';
import { converse } from './conversation.mjs';
import { documentAt } from './document.mjs';

const [, , source, server] = process.argv;
const [readme, clients] = ['README.md', 'docs/clients.md'].map((name) => documentAt(join(source, name)));
const read = (path) => readFileSync(join(source, path), 'utf8');
const tools = converse(server, [], { HOME: '/' }, [{ method: 'tools/list' }]).replies[0].tools.map(({ name }) => name);
const [packaged, brewed] = ['/usr/bin/halvane_mcp', '/opt/homebrew/bin/halvane_mcp'];

test('The figures in README.md are those of docs/performance.md: script/readme updates them', () => {
  assert.equal(withFigures(readme.text, read('docs/performance.md')), readme.text);
});

test('The links in docs/clients.md are up to date: script/readme updates them', () => {
  assert.equal(withLinks(clients.text), clients.text);
});

test('A page of figures without a row that README.md shows would be noticed', () => {
  const page = read('docs/performance.md').replaceAll('english-common', 'english-usual');
  assert.throws(() => withFigures(readme.text, page), /english-common/);
});

test('The picture shows what the server answers: script/picture draws it again', () => {
  const drawn = execFileSync(process.execPath,
    [join(source, 'packaging/readme/picture.mjs'), server, join(source, 'examples')], { encoding: 'utf8' });
  assert.equal(drawn, read('docs/conversation.svg'));
  assert.match(drawn, /prefers-color-scheme: dark/);
  assert.doesNotMatch(drawn, /font-face|href|url\(/);
});

const configurationsIn = (document) => document.blocks('json').map((block) => JSON.parse(block));

test('The configurations of both documents are JSON and name the server by its full path', () => {
  const configuration = { mcpServers: { halvane: { command: packaged } } };
  assert.deepEqual(configurationsIn(readme), [configuration]);
  const [whole, , withVariables] = configurationsIn(clients);
  assert.deepEqual(whole, configuration);
  assert.equal(withVariables.mcpServers.halvane.command, packaged);
});

test('The pieces of JSON in docs/clients.md are JSON', () => {
  const pieces = clients.inline.filter((code) => /^"\w+": /.test(code));
  assert.ok(pieces.length > 0);
  for (const piece of pieces) JSON.parse(`{${piece}}`);
  const [, argument] = clients.inline.map((code) => /^code --add-mcp '(.*)'$/.exec(code)).find(Boolean);
  assert.deepEqual(JSON.parse(argument), { name: 'halvane', command: packaged });
});

test('The tools that the documents show and allow are those of the server', () => {
  const shown = [...readme.text.matchAll(/^\| `(\w+)` \|/gm)].map(([, name]) => name);
  assert.deepEqual(shown.sort(), [...tools].sort());
  const { permissions } = configurationsIn(clients).find((value) => value.permissions);
  assert.deepEqual(permissions.allow.sort(), tools.map((name) => `mcp__halvane__${name}`).sort());
});

const installLinks = [...part(clients.text, 'install links').matchAll(/\[(.*?)\]\((.*?)\)/g)]
  .map(([, client, link]) => ({ client, link: new URL(link) }));
const linksOf = (wanted) => installLinks.filter(({ client }) => client === wanted).map(({ link }) => link);

test('The links for Cursor name the server, and hold its command in base 64', () => {
  const links = linksOf('Cursor');
  assert.deepEqual(links.map(({ host, pathname }) => host + pathname), Array(2).fill('cursor.com/install-mcp'));
  assert.deepEqual(links.map((link) => link.searchParams.get('name')), ['halvane', 'halvane']);
  const configurations = links.map((link) => JSON.parse(Buffer.from(link.searchParams.get('config'), 'base64')));
  assert.deepEqual(configurations, [{ command: packaged }, { command: brewed }]);
});

test('The links for VS Code name the server, and hold its command', () => {
  const links = linksOf('VS Code');
  assert.deepEqual(links.map(({ host, pathname }) => host + pathname), Array(2).fill('vscode.dev/redirect/mcp/install'));
  assert.deepEqual(links.map((link) => link.searchParams.get('name')), ['halvane', 'halvane']);
  const configurations = links.map((link) => JSON.parse(link.searchParams.get('config')));
  assert.deepEqual(configurations, [{ type: 'stdio', command: packaged }, { type: 'stdio', command: brewed }]);
});

test('There are no links for other clients', () => assert.equal(installLinks.length, 4));
