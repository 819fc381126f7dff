// The bundle, unpacked and started as a client does it.
//   node bundle_test.mjs PACKAGES EXAMPLES

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync, readdirSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { arch, platform } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { converse, homeWith, temporaryFolder } from './conversation.mjs';

const [, , packages, examples] = process.argv;
const mcpb = (...args) => execFileSync(join(packages, 'parts/npm/node_modules/.bin/mcpb'), args, { encoding: 'utf8' });

const processors = [arch().replace('x64', 'x86_64'), 'universal'];
const endings = processors.map((processor) => `-${platform()}-${processor}.mcpb`);
const bundles = readdirSync(packages).filter((file) => endings.some((ending) => file.endsWith(ending)));
const folder = temporaryFolder();
mcpb('unpack', join(packages, bundles[0]), folder);
const manifest = JSON.parse(readFileSync(join(folder, 'manifest.json'), 'utf8'));
const { command, args, env } = manifest.server.mcp_config;
const program = command.replace('${__dirname}', folder);
const home = homeWith(examples);
const ask = (...questions) => converse(program, args, { HOME: home, ...env }, questions);

test('There is one bundle for this system and processor', () => {
  assert.equal(bundles.length, 1);
  assert.deepEqual(manifest.compatibility.platforms, [platform()]);
});

test('The bundle holds the programs, an icon and the terms of what is linked into them, and nothing else', () => {
  assert.deepEqual(readdirSync(folder).sort(), ['icon.png', 'licences', 'manifest.json', 'server']);
  assert.deepEqual(readdirSync(join(folder, 'server')), ['halvane_doctor', 'halvane_mcp']);
});

test('The packer finds nothing wrong with the manifest', () => {
  assert.match(mcpb('validate', join(folder, 'manifest.json')), /validation passes/);
});

test('It names the packages that are linked in, and has the terms of each', { skip: platform() !== 'linux' }, () => {
  const licences = join(folder, 'licences');
  const text = readFileSync(join(licences, 'README'), 'utf8');
  const linked = [...text.matchAll(/^    ([\w+.-]+) [\w.:+~-]+$/gm)].map(([, name]) => name);
  assert.deepEqual(readdirSync(licences).sort(), ['LGPL-2.1', 'README', ...linked].sort());
  for (const library of ['libc6', 'libicu', 'libexpat', 'libstdc++', 'libboost']) {
    assert.ok(linked.some((name) => name.startsWith(library)), library);
  }
});

test('It says how to link the programs with another C library, and has the terms that ask for that', { skip: platform() !== 'linux' }, () => {
  const licences = join(folder, 'licences');
  const text = readFileSync(join(licences, 'README'), 'utf8');
  assert.ok(text.includes(`halvane_mcp-${manifest.version}.tar.gz`));
  assert.match(text, /^    script\/package$/m);
  assert.doesNotMatch(text, /@/);
  assert.match(readFileSync(join(licences, 'LGPL-2.1'), 'utf8'), /GNU LESSER GENERAL PUBLIC LICENSE/);
});

const awake = '~/Documents/Halvane/2025/03/2025-03-09-awake.md';
test('Started by the manifest\'s own command, it searches, lists and reads', () => {
  const { replies, stderr, status } = ask(
    { method: 'initialize', params: { protocolVersion: '2025-06-18', capabilities: {} } },
    { method: 'notifications/initialized' },
    { method: 'tools/call', params: { name: 'search_entries', arguments: { query: 'seeschwalbe', limit: 1 } } },
    { method: 'tools/call', params: { name: 'list_recent', arguments: { days: 1 } } },
    { method: 'tools/call', params: { name: 'read_entry', arguments: { path: awake } } },
  );
  const [, found, recent, entry] = replies.map((reply) => reply.content?.[0].text);
  assert.match(found, new RegExp(`^\\[.*${home}/Documents/Halvane/`));
  assert.equal(recent, 'No entries in the last 1 days.');
  assert.match(entry, /^Date: .*2025/);
  assert.deepEqual({ stderr, status }, { stderr: '', status: 0 });
});

const remotes = {
  'https://github.com/example/halvane_mcp': 'https://github.com/example/halvane_mcp',
  'https://gitlab.com/example/halvane_mcp.git': 'https://gitlab.com/example/halvane_mcp',
  'git@github.com:example/halvane_mcp.git': 'https://github.com/example/halvane_mcp',
};
const script = new URL('../../packaging/bundle/manifest.mjs', import.meta.url).pathname;
const manifestFor = (remote) => execFileSync(process.execPath, [script, '1.0.0', 'linux', remote], { encoding: 'utf8' });

for (const [remote, address] of Object.entries(remotes)) {
  test(`A manifest made of ${remote} leads to its pages, and the packer takes it`, () => {
    const made = JSON.parse(manifestFor(remote));
    assert.deepEqual([made.repository, made.homepage], [{ type: 'git', url: address }, address]);
    assert.match(made.documentation, /\/blob\/v1\.0\.0\/docs\/README\.md$/);
    assert.match(made.support, /\/issues$/);
    const path = join(folder, 'made.json');
    writeFileSync(path, manifestFor(remote));
    assert.match(mcpb('validate', path), /validation passes/);
    rmSync(path);
  });
}

test('A manifest made of a folder leads to no pages', () => {
  const { repository, homepage, documentation, support } = JSON.parse(manifestFor('/home/somebody/halvane_mcp'));
  assert.deepEqual([repository, homepage, documentation, support], Array(4).fill(undefined));
});

test('The manifest names the tools in the server\'s words', () => {
  const { tools } = ask({ method: 'tools/list' }).replies[0];
  assert.deepEqual(manifest.tools, tools.map(({ name, description }) => ({ name, description })));
});

test('The manifest has the version that the server says', () => {
  assert.equal(manifest.version, ask({ method: 'initialize' }).replies[0].serverInfo.version);
});

test('The program needs nothing but the system itself', () => {
  if (platform() === 'darwin') {
    const libraries = execFileSync('otool', ['-L', program], { encoding: 'utf8' }).split('\n').slice(1);
    for (const library of libraries.filter(Boolean)) assert.match(library, /^\t\/(usr\/lib|System)\//);
  } else {
    assert.doesNotMatch(execFileSync('objdump', ['-p', program], { encoding: 'utf8' }), /NEEDED|INTERP/);
  }
});

const mebibytes = (file) => statSync(file).size / 2 ** 20;
test('It is small', { skip: platform() !== 'linux' && 'ICU is linked whole here' }, () => {
  assert.ok(mebibytes(program) <= 14);
  assert.ok(mebibytes(join(packages, bundles[0])) <= 9);
  const [deb] = readdirSync(packages).filter((file) => file.endsWith(`_${arch().replace('x64', 'amd64')}.deb`));
  assert.ok(mebibytes(join(packages, deb)) <= 9);
  const installed = execFileSync('dpkg-deb', ['--field', join(packages, deb), 'Installed-Size'], { encoding: 'utf8' });
  assert.ok(Number(installed) <= 30 * 1024);
});

test('The icon is a picture of 512 by 512', () => {
  const icon = readFileSync(join(folder, manifest.icon));
  assert.equal(icon.toString('latin1', 1, 4), 'PNG');
  assert.deepEqual([icon.readUInt32BE(16), icon.readUInt32BE(20)], [512, 512]);
});
