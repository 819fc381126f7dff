import { cpSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';

// Every test is started as: node TEST SERVER EXAMPLES
const [, , server, examples] = process.argv;

/// A home folder with the journal of the examples in it and one entry of this minute. It goes when we go.
export const home = mkdtempSync(join(tmpdir(), 'halvane-clients-'));
process.on('exit', () => rmSync(home, { recursive: true, force: true }));
cpSync(examples, home, { recursive: true });

/// The text of that entry, and where it is.
export const todaysText = 'A client asked, and the journal answered.';
export const todaysPath = join(home, 'Documents/Halvane/today.md');
const now = `${new Date().toISOString().slice(0, 19)}Z`;
writeFileSync(todaysPath, `---\ndate: ${now}\ntags: [boats]\n---\n\n${todaysText}\n`);

// CoreFoundation reads the home folder from a variable of another name.
const homeIs = [`HOME=${home}`, ...(process.platform === 'darwin' ? [`CFFIXED_USER_HOME=${home}`] : [])];

/// The command line that starts the server, in the environment of this test and in the bare one that many clients
/// give it.
export const serverIn = {
  'this environment': ['env', '-u', 'XDG_CONFIG_HOME', ...homeIs, server],
  'a bare environment': ['env', '-i', ...homeIs, `PATH=${process.env.PATH}`, server],
};

/// All tools, each with all of its arguments and with none, and what their text has to hold.
export const calls = [
  { name: 'search_entries', arguments: { query: 'JOURNAL ANSWERED', tag: '#Boats', limit: 5 }, holds: todaysText },
  { name: 'search_entries', arguments: {}, holds: todaysPath },
  { name: 'read_entry', arguments: { path: todaysPath }, holds: todaysText },
  { name: 'read_entry', arguments: {}, holds: 'Refused: path is outside the journal.' },
  { name: 'list_recent', arguments: { days: 2, tag: 'boats' }, holds: todaysPath },
  { name: 'list_recent', arguments: {}, holds: todaysText },
];
export const toolNames = ['search_entries', 'read_entry', 'list_recent'];

/// The name of a call, for the name of its test.
export const nameOf = (call) =>
  `${call.name} with ${Object.keys(call.arguments).length === 0 ? 'no' : 'all'} arguments`;
