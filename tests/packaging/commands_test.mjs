// Types the commands of README.md, docs/*.md and CONTRIBUTING.md, one after the other, as a person would who has a clone
// of the source and an almost empty home folder. Skips those that can't run here, each with the reason.
//   node commands_test.mjs SOURCE BUILD          BUILD is where the tests are built
//   node commands_test.mjs SOURCE everything     types those that take long too: for a bare system

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { accessSync, constants, cpSync, existsSync, mkdirSync, readFileSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { join, relative, resolve } from 'node:path';
import { test } from 'node:test';
import { homeWith, temporaryFolder } from './conversation.mjs';
import { documentAt } from './document.mjs';

const [, , sourceArgument, build] = process.argv;
const source = resolve(sourceArgument);
const typesEverything = build === 'everything';
const inSource = (name) => documentAt(join(source, name));
const [readme, clients, configuration, contributing] =
  ['README.md', 'docs/clients.md', 'docs/configuration.md', 'CONTRIBUTING.md'].map(inSource);

const copy = temporaryFolder();
const isBuilt = (path) => ['build', '.git'].includes(relative(source, path));
cpSync(source, copy, { recursive: true, filter: (path) => !isBuilt(path) });

const home = homeWith(join(source, 'examples'));
const journal = join(home, 'Documents/Halvane');
rmSync(join(journal, 'packing list.md'));  // the one file that is not an entry
writeFileSync(join(home, '.gitconfig'), '[safe]\n\tdirectory = *\n');  // the source may be another user's

// Only PATH and what the machine needs are kept of this shell's environment. The person has not added the folder into which
// they install to PATH. Files that this machine has compiled before are not compiled again.
const kept = Object.entries(process.env).filter(([name]) => /^(PATH|TMPDIR|.*_proxy)$/i.test(name));
const { status: noCache, stdout: cache } = spawnSync('ccache', ['--get-config', 'cache_dir'], { encoding: 'utf8' });
const env = { ...Object.fromEntries(kept), HOME: home, ...(noCache === 0 && { CCACHE_DIR: cache.trim() }) };

function run(command) {
  return spawnSync('bash', ['-c', command], { cwd: copy, env, encoding: 'utf8' });
}

function type(command) {
  const { status, stdout, stderr } = run(command);
  assert.equal(status, 0, stdout + stderr);
  return stdout;
}

type('git init --quiet && git add --all');

// Why a command can't run here; false when it can.
function whyNot(command) {
  if (/^sudo apt /.test(command)) return 'it installs into this system; debian_installation_test types it elsewhere';
  if (/\bbrew\b/.test(command)) return 'it installs into this system; the workflow types it, on macOS';
  if (/^git clone |^cd halvane_mcp$/.test(command)) return 'another test clones the source';
  if (/^(script\/test|cmake --build --preset debug|ctest|script\/bootstrap test)/.test(command) && !typesEverything)
    return 'it takes long, or installs into this system';
  const program = command === 'script/format' ? 'clang-format' : command.split(' ')[0];
  return run(`command -v ${program}`).status === 0 ? false : `${program} is not installed here`;
}

// What a command must print, apart from succeeding.
const prints = {
  'script/demo': /Seeschwalbe/,
  'script/demo ~': /2025-03-20-launch\.md/,
  '~/.local/bin/halvane_doctor': /: 14\n/,
};

function typed(command) {
  test(command, (context) => {
    const reason = whyNot(command);
    if (reason) return context.skip(reason);
    assert.match(type(command), prints[command] ?? /^/);
  });
}

test('The commands that get the source do so', { skip: !existsSync(join(source, '.git')) && 'this is not a clone' }, () => {
  const [clone, enter] = readme.commands.filter((command) => /^git clone|^cd /.test(command));
  const elsewhere = temporaryFolder();
  type(`cd ${elsewhere} && ${clone.replace('ADDRESS', `'${source}'`)} && ${enter} && test -x script/demo`);
});

const removal = readme.commands.at(-1);
readme.commands.slice(0, -1).forEach(typed);

const ofClients = clients.inline.filter((code) => /^(claude|code|codex|gemini) -{0,2}\w/.test(code));
test('There is a command for each client that has one', () => {
  assert.deepEqual(ofClients.map((command) => command.split(' ')[0]), ['claude', 'code', 'codex', 'gemini']);
});
ofClients.forEach(typed);

test('The line that tries the server gets the answer that the document shows', () => {
  const [command] = clients.commands;
  const answer = type(command).trimEnd();
  assert.ok(clients.inline.includes(answer), answer);
});

const doctor = '~/.local/bin/halvane_doctor';

test('The entry that README.md shows is one', () => {
  const before = type(doctor);
  writeFileSync(join(journal, 'shown.md'), readme.blocks('text')[0]);
  const after = type(doctor);
  assert.match(before, /: 14\n/);
  assert.match(after, /: 15\n/);
});

test('The entry that docs/entry-format.md shows is one', () => {
  writeFileSync(join(journal, 'whole.md'), inSource('docs/entry-format.md').blocks('text')[0]);
  assert.match(type(doctor), /: 16\n/);
});

test('The preferences that docs/configuration.md shows move the journal', { skip: process.platform !== 'linux' }, () => {
  mkdirSync(join(home, '.config'), { recursive: true });
  mkdirSync(join(home, 'Journal'));
  cpSync(join(journal, 'shown.md'), join(home, 'Journal/shown.md'));
  const preferences = join(home, '.config/app.halvane.Halvane.plist');
  writeFileSync(preferences, configuration.blocks('xml')[0]);
  const report = type(doctor);
  rmSync(preferences);
  assert.ok(report.includes(`${home}/Journal\n`), report);
  assert.match(report, /: 1\n/);
});

test('The conversation that CONTRIBUTING.md shows goes as shown', () => {
  const lines = contributing.blocks('text')[0].split('\n');
  const linesAfter = (sign) => lines.filter((line) => line.startsWith(sign)).map((line) => line.slice(2) + '\n').join('');
  assert.notEqual(linesAfter('> '), '');
  assert.equal(type(`~/.local/bin/halvane_mcp <<'END'\n${linesAfter('> ')}END`), linesAfter('< '));
});

test('The command that removes the program leaves no file of it', { skip: whyNot(removal) }, () => {
  assert.match(readFileSync(join(copy, 'build/release/install_manifest.txt'), 'utf8'), /bin\/halvane_mcp/);
  type(removal);
  const left = readdirSync(join(home, '.local'), { recursive: true, withFileTypes: true }).filter((item) => !item.isDirectory());
  assert.deepEqual(left, []);
});

contributing.commands.forEach(typed);

test('The names of tests in CONTRIBUTING.md are those of tests', { skip: typesEverything }, () => {
  const names = [...contributing.text.matchAll(/(?:--tests-regex|script\/test)((?: \w+)+)/g)].flatMap(([, words]) => words.trim().split(' '));
  assert.ok(names.length > 0);
  for (const name of names) {
    const listing = type(`ctest --test-dir '${build}' --show-only --tests-regex ${name}`);
    assert.doesNotMatch(listing, /Total Tests: 0/, name);
  }
});

// Some of its commands are only named in a table. Each script knows what it is given.
const ofContributors = [...contributing.commands, ...contributing.inline].filter((code) => code.startsWith('script/'));

function lackOf(script) {
  const [, interpreter] = /^#!\/usr\/bin\/env (\S+)/.exec(readFileSync(join(copy, script), 'utf8')) ?? [];
  return run(`command -v ${interpreter}`).status === 0 ? false : `${interpreter} is not installed here`;
}

for (const script of new Set(ofContributors.map((command) => command.split(' ')[0]))) {
  test(`${script} can be run and explains the forms that CONTRIBUTING.md names`, { skip: lackOf(script) }, () => {
    accessSync(join(copy, script), constants.X_OK);
    const { stdout, stderr } = run(`${script} --help`);
    const named = ofContributors.filter((command) => command.split(' ')[0] === script);
    for (const command of named) assert.ok((stdout + stderr).includes(command), command);
  });
}

test('The preset that CONTRIBUTING.md configures, builds and tests exists', () => {
  const presets = JSON.parse(readFileSync(join(copy, 'CMakePresets.json'), 'utf8'));
  const calls = contributing.commands.map((command) => /^(cmake --build|cmake|ctest) --preset (\w+)/.exec(command)).filter(Boolean);
  const kinds = { cmake: 'configurePresets', 'cmake --build': 'buildPresets', ctest: 'testPresets' };
  assert.deepEqual(calls.map(([, program]) => program), ['cmake', 'cmake --build', 'ctest']);
  for (const [, program, name] of calls) assert.ok(presets[kinds[program]].some((preset) => preset.name === name), name);
});
