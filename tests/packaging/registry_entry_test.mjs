// Checks that the entry for the registry of MCP servers meets that registry's rules.
//   node registry_entry_test.mjs PACKAGES

import assert from 'node:assert/strict';
import { createHash } from 'node:crypto';
import { readFileSync } from 'node:fs';
import { basename, join } from 'node:path';
import { test } from 'node:test';

const [, , packages] = process.argv;
const entry = JSON.parse(readFileSync(join(packages, 'server.json'), 'utf8'));

const isText = (value, longest) => typeof value === 'string' && value.length > 0 && value.length <= longest;
const isExactVersion = (value) => /^\d+\.\d+\.\d+(-[\w.]+)?$/.test(value);
const hasOnly = (object, names) => Object.keys(object).every((name) => names.includes(name));

// A bundle is downloaded from a release, and a client checks its hash before it runs it.
const isBundle = (given) =>
  hasOnly(given, ['registryType', 'identifier', 'version', 'fileSha256', 'transport']) &&
  given.registryType === 'mcpb' &&
  /^https:\/\/(github|gitlab)\.com\/.*\/releases\/.*mcp/.test(given.identifier) &&
  isExactVersion(given.version) &&
  /^[0-9a-f]{64}$/.test(given.fileSha256) &&
  given.transport?.type === 'stdio' && hasOnly(given.transport, ['type']);

// What the registry refuses in an entry: the names of the members that are not as it wants them.
const refused = (given) =>
  Object.entries({
    $schema: given.$schema === 'https://static.modelcontextprotocol.io/schemas/2025-12-11/server.schema.json',
    name: isText(given.name, 200) && /^[a-z0-9-]+(\.[a-z0-9-]+)+\/[a-zA-Z0-9]([\w.-]*[a-zA-Z0-9])?$/.test(given.name),
    title: given.title === undefined || isText(given.title, 100),
    description: isText(given.description, 100),
    version: isText(given.version, 255) && isExactVersion(given.version),
    repository: given.repository === undefined ||
      (/^https:\/\/git(hub|lab)\.com\/[\w.-]+\/[\w.-]+$/.test(given.repository.url) &&
        given.repository.url.includes(`//${given.repository.source}.`) && hasOnly(given.repository, ['url', 'source'])),
    packages: given.packages?.length > 0 && given.packages.every(isBundle),
    others: hasOnly(given, ['$schema', 'name', 'title', 'description', 'version', 'repository', 'packages']),
  }).filter(([, isGood]) => !isGood).map(([name]) => name);

test('The registry has nothing to refuse', () => {
  assert.deepEqual(refused(entry), []);
});

test('Each bundle is named with the hash that it has', () => {
  for (const { identifier, fileSha256 } of entry.packages) {
    const bundle = readFileSync(join(packages, basename(identifier)));
    assert.equal(fileSha256, createHash('sha256').update(bundle).digest('hex'));
  }
});

const withBundle = (change) => ({ packages: [{ ...entry.packages[0], ...change }] });
const spoiled = {
  'without a schema': { $schema: undefined },
  'with a name that has no namespace': { name: 'halvane_mcp' },
  'with two slashes in its name': { name: 'app.halvane/mcp/server' },
  'without a description': { description: '' },
  'with a long description': { description: 'x'.repeat(101) },
  'with a range for a version': { version: '^1.0.0' },
  'without packages': { packages: [] },
  'with a member that nobody knows': { licence: 'none' },
  'with a repository elsewhere': { repository: { url: 'https://example.org/a/b', source: 'example' } },
  'with a bundle without a hash': withBundle({ fileSha256: undefined }),
  'with a bundle that is not to be had over https': withBundle({ identifier: 'http://github.com/a/b/releases/x.mcpb' }),
  'with a bundle on another host': withBundle({ identifier: 'https://example.org/releases/x.mcpb' }),
  'with a bundle without a transport': withBundle({ transport: undefined }),
  'with the latest version of a bundle': withBundle({ version: 'latest' }),
};
for (const [name, change] of Object.entries(spoiled)) {
  test(`An entry ${name} would be refused`, () => {
    assert.equal(refused({ ...entry, ...change }).length, 1);
  });
}
