// The packages from npm are pinned by their hash. They come from the registry that npm is set to.
//   node lock_files_test.mjs SOURCE

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

const [, , source] = process.argv;

for (const folder of ['packaging', 'tests/clients']) {
  const lock = readFileSync(join(source, folder, 'package-lock.json'), 'utf8');

  test(`The lock file in ${folder} holds no address`, () => assert.doesNotMatch(lock, /:\/\//));

  test(`The lock file in ${folder} has the hash of each package`, () => {
    const { '': _, ...packages } = JSON.parse(lock).packages;
    for (const [name, { integrity, inBundle }] of Object.entries(packages)) {
      assert.ok(inBundle || /^sha512-/.test(integrity), name);
    }
  });
}
