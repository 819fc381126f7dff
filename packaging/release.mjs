// Writes what refers to a release: the entry for the registry of MCP servers, and the Homebrew formula.
//   node release.mjs VERSION ADDRESS FOLDER

import { createHash } from 'node:crypto';
import { readFileSync, readdirSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';

const [, , version, address, folder] = process.argv;
const template = (name) => readFileSync(new URL(name, import.meta.url), 'utf8');
const sha256 = (file) => createHash('sha256').update(readFileSync(join(folder, file))).digest('hex');

// A release of a forge stands below the repository that it was made from.
const [repository, isBelowIt] = address.split('/releases/');

function registryEntry() {
  const isBundle = (file) => file.startsWith(`halvane_mcp-${version}-`) && file.endsWith('.mcpb');
  return {
    ...JSON.parse(template('registry/server.json')),
    ...(isBelowIt && { repository: { url: repository, source: new URL(repository).hostname.replace(/\.com$/, '') } }),
    version,
    packages: readdirSync(folder).filter(isBundle).sort().map((bundle) => ({
      registryType: 'mcpb',
      identifier: `${address}/${bundle}`,
      version,
      fileSha256: sha256(bundle),
      transport: { type: 'stdio' },
    })),
  };
}

function formula() {
  const source = `halvane_mcp-${version}.tar.gz`;
  const values = { HOMEPAGE: repository, ADDRESS: `${address}/${source}`, SHA256: sha256(source) };
  const [, body] = template('homebrew/halvane_mcp.rb').split(/^#.*\n/);
  return body.replace(/@(\w+)@/g, (_, name) => values[name]);
}

writeFileSync(join(folder, 'server.json'), JSON.stringify(registryEntry(), null, 2) + '\n');
writeFileSync(join(folder, 'halvane_mcp.rb'), formula());
