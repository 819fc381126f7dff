// The command line of the protocol's own Inspector.

import assert from 'node:assert/strict';
import { execFile } from 'node:child_process';
import { suite, test } from 'node:test';
import { promisify } from 'node:util';
import { calls, home, nameOf, serverIn, toolNames } from './journal_home.mjs';

const inspector = 'node_modules/@modelcontextprotocol/inspector/clients/launcher/build/index.js';

// What the Inspector prints, as JSON, and what it says beside it. Throws when its exit status is not 0.
async function inspect(command, ...args) {
  const options = { env: { HOME: home, PATH: process.env.PATH }, timeout: 60000 };
  const { stdout, stderr } = await promisify(execFile)(
    process.execPath, [inspector, '--cli', '--format', 'json', ...args, '--', ...command], options);
  return { result: JSON.parse(stdout).result, remarks: stderr };
}

const call = (name, args) =>
  ['--method', 'tools/call', '--tool-name', name, '--tool-args-json', JSON.stringify(args)];

for (const [environment, command] of Object.entries(serverIn)) {
  suite(`In ${environment} the Inspector`, { concurrency: 2 }, () => {
    test('is told name and capabilities', async () => {
      const { result } = await inspect(command, '--method', 'initialize');
      assert.equal(result.serverInfo.name, 'Halvane');
      assert.deepEqual(result.capabilities, { tools: {} });
    });

    test('finds nothing wrong with the schemas of the tools', async () => {
      const { result, remarks } = await inspect(command, '--method', 'tools/list', '--strict');
      assert.deepEqual(result.tools.map((tool) => tool.name), toolNames);
      assert.equal(remarks, '');
    });

    for (const each of calls) {
      test(`calls ${nameOf(each)}`, async () => {
        const { result } = await inspect(command, ...call(each.name, each.arguments));
        assert.ok(result.content[0].text.includes(each.holds), result.content[0].text);
        assert.equal(result.isError, false);
      });
    }

    test('gets all answers when it asks ten questions at a time', async () => {
      const load = ['--load', '--load-concurrency', '10', '--load-requests', '200'];
      const { result } = await inspect(command, ...call('search_entries', { query: 'boat' }), ...load);
      assert.equal(result.ok, 200);
      assert.equal(result.errorRate, 0);
    });
  });
}
