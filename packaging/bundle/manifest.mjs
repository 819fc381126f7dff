// Prints the bundle's manifest: manifest.json, and what is known only when the bundle is made.
//   node manifest.mjs VERSION PLATFORM REMOTE
// REMOTE is where git has the source from. Where that is a repository of a forge, its pages are in the manifest.

import { readFileSync } from 'node:fs';

const [, , version, platform, remote] = process.argv;

/// The pages of the repository that git fetches from `remote`; nothing when it is not on a forge, a folder for example.
function pagesOf(remote) {
  const [, forge, path] = /^(?:https:\/\/|(?:ssh:\/\/)?git@)(github\.com|gitlab\.com)[/:]([\w.-]+\/[\w.-]+?)(?:\.git)?$/.exec(remote) ?? [];
  if (!forge) return {};
  const url = `https://${forge}/${path}`;
  const between = forge === 'gitlab.com' ? '/-' : '';
  return {
    repository: { type: 'git', url },
    homepage: url,
    documentation: `${url}${between}/blob/v${version}/docs/README.md`,
    support: `${url}${between}/issues`,
  };
}

const template = JSON.parse(readFileSync(new URL('manifest.json', import.meta.url), 'utf8'));
const manifest = { ...template, version, ...pagesOf(remote), compatibility: { platforms: [platform] } };
console.log(JSON.stringify(manifest, null, 2));
