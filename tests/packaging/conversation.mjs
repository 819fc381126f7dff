import { spawnSync } from 'node:child_process';
import { cpSync, mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';

/// A temporary folder that is removed when this process ends.
export function temporaryFolder() {
  const folder = mkdtempSync(join(tmpdir(), 'halvane-packaging-'));
  process.on('exit', () => rmSync(folder, { recursive: true, force: true }));
  return folder;
}

/// A home folder with the journal of the examples in it.
export function homeWith(examples) {
  const home = temporaryFolder();
  cpSync(examples, home, { recursive: true });
  return home;
}

/// Starts the server in a bare environment, asks it the questions one after the other, and gives what it answered and
/// how it ended.
export function converse(command, args, environment, questions) {
  const lines = questions.map((question, id) => JSON.stringify({ jsonrpc: '2.0', id, ...question }) + '\n');
  const env = { PATH: '/usr/bin:/bin', ...environment };
  const { stdout, stderr, status, error } = spawnSync(command, args, { env, input: lines.join(''), encoding: 'utf8' });
  if (error) throw error;
  return { replies: stdout.split('\n').filter(Boolean).map((line) => JSON.parse(line).result), stderr, status };
}

/// What the server says that it is: {name, version}.
export function introduction(server) {
  return converse(server, [], { HOME: '/' }, [{ method: 'initialize' }]).replies[0].serverInfo;
}
