// The Homebrew formula. Homebrew itself runs it on macOS only, in the workflow.
//   node formula_test.mjs PACKAGES SERVER

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { createHash } from 'node:crypto';
import { readFileSync } from 'node:fs';
import { basename, join } from 'node:path';
import { test } from 'node:test';

const [, , packages, server] = process.argv;
const file = join(packages, 'halvane_mcp.rb');
const formula = readFileSync(file, 'utf8');
const valueOf = (name) => new RegExp(`^  ${name} "(.*)"$`, 'm').exec(formula)[1];

test('Ruby reads it without a warning', () => {
  assert.equal(execFileSync('ruby', ['-wc', file], { encoding: 'utf8' }), 'Syntax OK\n');
});

test('Nothing in it is left to be filled in', () => assert.doesNotMatch(formula, /@|undefined/));

test('It names the source archive with the hash that it has', () => {
  const archive = readFileSync(join(packages, basename(valueOf('url'))));
  assert.equal(valueOf('sha256'), createHash('sha256').update(archive).digest('hex'));
});

test('The programs that it tries are those that are installed', () => {
  const tried = [...formula.matchAll(/bin\/"(\w+)"/g)].map(([, program]) => program);
  assert.deepEqual(tried.sort(), ['halvane_doctor', 'halvane_mcp']);
});

test('The line that it pipes through the program gets the answer that it waits for', () => {
  const [, question] = /ping = '(.*)'/.exec(formula);
  const [, answer] = /assert_equal %Q\((.*)\\n\)/.exec(formula);
  assert.equal(execFileSync(server, { input: question + '\n', encoding: 'utf8' }), answer + '\n');
});
