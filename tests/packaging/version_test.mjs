// The version is written in one place. Everything else that shows a version shows this one.
//   node version_test.mjs PACKAGES SOURCE SERVER VERSION-OF-CMAKE

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { existsSync, readFileSync, readdirSync } from 'node:fs';
import { platform } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { introduction } from './conversation.mjs';

const [, , packages, source, server, versionOfCMake] = process.argv;
const read = (...path) => readFileSync(join(...path), 'utf8');

const version = /serverVersion = "(.*)"/.exec(read(source, 'server/server_version.h'))[1];
const made = (ending) => readdirSync(packages).filter((file) => file.includes(version) && file.endsWith(ending));

test('The server says it', () => assert.equal(introduction(server).version, version));

test('CMake has read it', () => assert.equal(versionOfCMake, version));

test('In the changelog it comes first after the unreleased changes', () => {
  const headings = [...read(source, 'CHANGELOG.md').matchAll(/^## (\S+)/gm)].map(([, heading]) => heading);
  assert.deepEqual(headings.slice(0, 2), ['Unreleased', version]);
});

test('In the changelog each released version has its day', () => {
  const [, unreleased, ...released] = read(source, 'CHANGELOG.md').split(/^## /m).map((part) => part.split('\n')[0]);
  assert.equal(unreleased, 'Unreleased');
  for (const heading of released) assert.match(heading, /^\d+\.\d+\.\d+ - \d{4}-\d{2}-\d{2}$/);
});

test('The changelog sorts the changes of each version by the kinds of Keep a Changelog, in their order', () => {
  const order = ['Added', 'Changed', 'Deprecated', 'Removed', 'Fixed', 'Security'];
  const kindsOf = (text) => [...text.matchAll(/^### (.*)/gm)].map(([, kind]) => kind);
  const [, ...versions] = read(source, 'CHANGELOG.md').split(/^## /m);
  assert.ok(versions.some((text) => kindsOf(text).length > 0));
  for (const text of versions) {
    const kinds = kindsOf(text);
    assert.deepEqual(kinds, order.filter((kind) => kinds.includes(kind)));
  }
});

test('The bundle has it, in its name and in its manifest', () => {
  assert.notDeepEqual(made('.mcpb'), []);
  assert.equal(JSON.parse(read(packages, 'parts/bundle/manifest.json')).version, version);
});

test('The Debian package has it', { skip: platform() !== 'linux' && 'there is no Debian package here' }, () => {
  const [deb] = made('.deb');
  const field = execFileSync('dpkg-deb', ['--field', join(packages, deb), 'Version'], { encoding: 'utf8' });
  assert.equal(field.trim(), version);
});

test('The registry entry has it, for itself and for each bundle', () => {
  const entry = JSON.parse(read(packages, 'server.json'));
  assert.deepEqual([entry.version, ...entry.packages.map((bundle) => bundle.version)],
    Array(1 + entry.packages.length).fill(version));
});

test('The Homebrew formula builds the source of it', () => {
  const [, address] = /url "(.*)"/.exec(read(packages, 'halvane_mcp.rb'));
  assert.ok(address.endsWith(`/halvane_mcp-${version}.tar.gz`), address);
});
