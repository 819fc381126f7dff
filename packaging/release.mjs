// Writes what refers to a release: the entry for the registry of MCP servers, the Homebrew formula, the text of the
// release's page, and the checksums of all that people can download.
//   node release.mjs VERSION ADDRESS FOLDER

import { createHash } from 'node:crypto';
import { readFileSync, readdirSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';

const [, , version, address, folder] = process.argv;
const template = (name) => readFileSync(new URL(name, import.meta.url), 'utf8');
const sha256 = (file) => createHash('sha256').update(readFileSync(join(folder, file))).digest('hex');

const made = (name, ending) => readdirSync(folder).filter((file) => file.startsWith(name) && file.endsWith(ending)).sort();
const bundles = made(`halvane_mcp-${version}-`, '.mcpb');
const debianPackages = made(`halvane-mcp_${version}_`, '.deb');
const source = `halvane_mcp-${version}.tar.gz`;

// A release of a forge stands below the repository that it was made from.
const [repository, download] = address.split('/releases/');
if (download && download !== `download/v${version}`) {
  throw new Error(`The version is ${version}, so the address of its release ends in v${version}: ${address}`);
}

function registryEntry() {
  return {
    ...JSON.parse(template('registry/server.json')),
    ...(download && { repository: { url: repository, source: new URL(repository).hostname.replace(/\.com$/, '') } }),
    version,
    packages: bundles.map((bundle) => ({
      registryType: 'mcpb',
      identifier: `${address}/${bundle}`,
      version,
      fileSha256: sha256(bundle),
      transport: { type: 'stdio' },
    })),
  };
}

function formula() {
  const values = { HOMEPAGE: repository, ADDRESS: `${address}/${source}`, SHA256: sha256(source) };
  const [, body] = template('homebrew/halvane_mcp.rb').split(/^#.*\n/);
  return body.replace(/@(\w+)@/g, (_, name) => values[name]);
}

// What CHANGELOG.md says under the version's heading.
function pageText() {
  const [heading, ...changes] = template('../CHANGELOG.md').split(/^## /m).map((part) => part.split('\n'))
    .find(([heading]) => heading.split(' - ')[0] === version) ?? [];
  if (!heading) throw new Error(`CHANGELOG.md has no heading ${version}.`);
  return changes.join('\n').trim() + '\n';
}

writeFileSync(join(folder, 'server.json'), JSON.stringify(registryEntry(), null, 2) + '\n');
writeFileSync(join(folder, 'halvane_mcp.rb'), formula());
writeFileSync(join(folder, 'page.md'), pageText());

const files = [...bundles, ...debianPackages, source, 'halvane_mcp.rb', 'server.json'];
writeFileSync(join(folder, 'SHA256SUMS'), files.map((file) => `${sha256(file)}  ${file}\n`).join(''));
