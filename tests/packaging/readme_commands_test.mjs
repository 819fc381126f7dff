// Types the commands of README.md, one after the other, as a person with a copy of the source and a home folder would.
// Those that can't run here are skipped, each with the reason.
//   node readme_commands_test.mjs SOURCE

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { cpSync, mkdirSync, rmSync, writeFileSync } from 'node:fs';
import { join, relative } from 'node:path';
import { test } from 'node:test';
import { homeWith, temporaryFolder } from './conversation.mjs';
import { readmeOf } from './readme.mjs';

const [, , source] = process.argv;
const readme = readmeOf(source);

const copy = temporaryFolder();
const isBuilt = (path) => ['build', '.git'].includes(relative(source, path));
cpSync(source, copy, { recursive: true, filter: (path) => !isBuilt(path) });

const home = homeWith(join(source, 'examples'));
const journal = join(home, 'Documents/Halvane');
rmSync(join(journal, 'packing list.md'));  // the one file that is no entry

const { XDG_CONFIG_HOME: _, ...environment } = process.env;
const env = { ...environment, HOME: home, PATH: `${home}/.local/bin:${process.env.PATH}` };

function type(command) {
  const { status, stdout, stderr } = spawnSync('bash', ['-c', command], { cwd: copy, env, encoding: 'utf8' });
  assert.equal(status, 0, stdout + stderr);
  return stdout;
}

const isHere = (program) => spawnSync('bash', ['-c', 'command -v "$0"', program], { cwd: copy, env }).status === 0;

// Why a command is not for here; false when it is.
function whyNot(command) {
  if (command === 'script/test') return 'it would begin with this test again';
  if (/^sudo apt /.test(command)) return 'it installs into this system; debian_installation_test does it elsewhere';
  if (/\bbrew\b/.test(command)) return 'it installs into this system; the workflow does it, on macOS';
  const [program] = command.split(' ');
  return isHere(program) ? false : `${program} is not here`;
}

// What a command must print, beyond that it succeeds.
const prints = {
  'script/demo': /Seeschwalbe/,
  'script/demo ~': /What are my newest entries\?[^]*2025-03-20-launch\.md/,
  halvane_doctor: /Entries among them: 14\n[^]*All is well\.\n$/,
};

const inBlocks = readme.blocks('sh').flatMap((block) => block.split('\n'))
  .map((line) => line.replace(/ +#.*/, '')).filter(Boolean);
const isInstalled = () => isHere('halvane_doctor');

for (const command of inBlocks) {
  test(command, (context) => {
    const reason = whyNot(command);
    if (reason) return context.skip(reason);
    assert.match(type(command), prints[command] ?? /^/);
  });
}

const ofClients = readme.inline.filter((code) => /^(claude|code|codex|gemini) -{0,2}\w/.test(code));
test('There is a command for each client that has one', () => {
  assert.deepEqual(ofClients.map((command) => command.split(' ')[0]), ['claude', 'code', 'codex', 'gemini']);
});
for (const command of ofClients) {
  test(command, (context) => {
    const reason = whyNot(command);
    if (reason) return context.skip(reason);
    type(command);
  });
}

test('The line that tries the server gets one line', () => {
  assert.ok(isInstalled());
  const [command] = readme.inline.filter((code) => code.startsWith('echo '));
  assert.equal(type(command), '{"jsonrpc":"2.0","id":1,"result":{}}\n');
});

test('The entry that it shows is one', () => {
  const [entry] = readme.blocks('text');
  writeFileSync(join(journal, 'shown.md'), entry);
  assert.match(type('halvane_doctor'), /Entries among them: 15\n/);
});

test('The preferences that it shows for Linux move the journal', { skip: process.platform !== 'linux' }, () => {
  mkdirSync(join(home, '.config'), { recursive: true });
  mkdirSync(join(home, 'Journal'));
  cpSync(join(journal, 'shown.md'), join(home, 'Journal/shown.md'));
  writeFileSync(join(home, '.config/app.halvane.Halvane.plist'), readme.blocks('xml')[0]);
  const report = type('halvane_doctor');
  assert.ok(report.startsWith(`Where the journal is\n  ${home}/Journal\n`), report);
  assert.match(report, /Entries among them: 1\n/);
});
