// README.md, held against what it speaks of.
//   node readme_test.mjs SOURCE SERVER

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { existsSync, readFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { part, withMadeParts } from '../../packaging/readme/made_parts.mjs';
import { converse } from './conversation.mjs';
import { readmeOf } from './readme.mjs';

const [, , source, server] = process.argv;
const readme = readmeOf(source);
const read = (path) => readFileSync(join(source, path), 'utf8');
const tools = converse(server, [], { HOME: '/' }, [{ method: 'tools/list' }]).replies[0].tools.map(({ name }) => name);
const [packaged, brewed] = ['/usr/bin/halvane_mcp', '/opt/homebrew/bin/halvane_mcp'];

test('Its links to files lead to files', () => {
  const targets = [...readme.text.matchAll(/\]\(([^)\s]+)\)/g)].map(([, target]) => target);
  const files = targets.filter((target) => !target.includes('://'));
  assert.ok(files.length > 3);
  for (const file of files) assert.ok(existsSync(join(source, file)), file);
});

test('What it takes from elsewhere is what stands there: script/readme makes it anew', () => {
  assert.equal(withMadeParts(readme.text, read('docs/performance.md')), readme.text);
});

test('A page of figures without a row that it shows would be noticed', () => {
  const page = read('docs/performance.md').replaceAll('english-common', 'english-usual');
  assert.throws(() => withMadeParts(readme.text, page), /english-common/);
});

test('Its picture is of what the server answers: script/picture draws it anew', () => {
  const drawn = execFileSync(process.execPath,
    [join(source, 'packaging/readme/picture.mjs'), server, join(source, 'examples')], { encoding: 'utf8' });
  assert.equal(drawn, read('docs/conversation.svg'));
  assert.match(drawn, /prefers-color-scheme: dark/);
  assert.doesNotMatch(drawn, /font-face|href|url\(/);
});

test('Its blocks of JSON are JSON, and the first one names the server by its whole path', () => {
  const [configuration] = readme.blocks('json').map((block) => JSON.parse(block));
  assert.deepEqual(configuration, { mcpServers: { halvane: { command: packaged } } });
});

test('Its pieces of JSON are JSON', () => {
  const pieces = readme.inline.filter((code) => /^"\w+": /.test(code));
  assert.ok(pieces.length > 0);
  for (const piece of pieces) JSON.parse(`{${piece}}`);
  const [, argument] = readme.inline.map((code) => /^code --add-mcp '(.*)'$/.exec(code)).find(Boolean);
  assert.deepEqual(JSON.parse(argument), { name: 'halvane', command: packaged });
});

test('The tools that it shows, and has allowed, are those that the server has', () => {
  const shown = [...readme.text.matchAll(/^\| `(\w+)` \|/gm)].map(([, name]) => name);
  assert.deepEqual(shown.sort(), [...tools].sort());
  const { permissions } = readme.blocks('json').map((block) => JSON.parse(block)).find((value) => value.permissions);
  assert.deepEqual(permissions.allow.sort(), tools.map((name) => `mcp__halvane__${name}`).sort());
});

const installLinks = [...part(readme.text, 'install links').matchAll(/\[(.*?)\]\((.*?)\)/g)]
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
