// What belongs to a release beside its packages: checksums, the text of its page, an address that its tag is in.
//   node release_test.mjs PACKAGES SOURCE VERSION

import assert from 'node:assert/strict';
import { execFileSync, spawnSync } from 'node:child_process';
import { cpSync, readFileSync, readdirSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { temporaryFolder } from './conversation.mjs';

const [, , packages, source, version] = process.argv;
const read = (...path) => readFileSync(join(...path), 'utf8');
const forge = 'https://github.com/example/halvane_mcp/releases/download';

test('The checksums are those of the files', () => {
  execFileSync('sha256sum', ['--check', '--strict', 'SHA256SUMS'], { cwd: packages });
});

test('Every file that people can download has a checksum, and the page has the rest', () => {
  const files = readdirSync(packages, { withFileTypes: true }).filter((item) => item.isFile()).map(({ name }) => name);
  const checked = read(packages, 'SHA256SUMS').trim().split('\n').map((line) => line.split('  ')[1]);
  assert.deepEqual([...checked, 'SHA256SUMS', 'page.md'].sort(), files.sort());
});

test('The page says what the changelog says of this version, and nothing of another', () => {
  const page = read(packages, 'page.md');
  const [, changes] = read(source, 'CHANGELOG.md').split(`\n## ${version} - `);
  assert.ok(changes.slice(changes.indexOf('\n')).trimStart().startsWith(page));
  assert.match(page, /^### /);
  assert.doesNotMatch(page, /^## /m);
});

// A copy of the script, its templates and the packages, where something is wrong
const copy = temporaryFolder();
cpSync(join(source, 'packaging'), join(copy, 'packaging'), { recursive: true });
cpSync(join(source, 'CHANGELOG.md'), join(copy, 'CHANGELOG.md'));
cpSync(packages, join(copy, 'packages'), { recursive: true, filter: (path) => path !== join(packages, 'parts') });
const describe = (ofVersion, address) => spawnSync(process.execPath,
  [join(copy, 'packaging/release.mjs'), ofVersion, address, join(copy, 'packages')], { encoding: 'utf8' });

test('The same release is described in the same bytes', () => {
  assert.equal(describe(version, `${forge}/v${version}`).status, 0);
  for (const file of ['SHA256SUMS', 'page.md', 'server.json', 'halvane_mcp.rb']) {
    assert.equal(read(copy, 'packages', file), read(packages, file));
  }
});

test('The tag of another version makes no release of this one', () => {
  const { status, stderr } = describe(version, `${forge}/v${version}.1`);
  assert.notEqual(status, 0);
  assert.match(stderr, /ends in v/);
});

test('A version that the changelog does not name makes no release', () => {
  writeFileSync(join(copy, 'CHANGELOG.md'), read(source, 'CHANGELOG.md').replace(`## ${version} - `, '## 0.0.1 - '));
  const { status, stderr } = describe(version, `${forge}/v${version}`);
  assert.notEqual(status, 0);
  assert.match(stderr, /no heading/);
});
