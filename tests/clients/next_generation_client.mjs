// The SDK's next generation. In its "legacy" mode it greets as all clients did; in "auto" it first asks
// server/discover, which we don't know, and then does the same.

import assert from 'node:assert/strict';
import { suite, test } from 'node:test';
import { Client } from '@modelcontextprotocol/client';
import { StdioClientTransport } from '@modelcontextprotocol/client/stdio';
import { calls, nameOf, serverIn, toolNames } from './journal_home.mjs';

const newClient = (mode) => new Client({ name: 'next generation', version: '1' }, { versionNegotiation: { mode } });
const parameters = ([command, ...args]) => ({ command, args, stderr: 'pipe', env: process.env });

// A transport that keeps the methods that were sent on it and the codes of the errors that came back.
class OverheardTransport extends StdioClientTransport {
  heard = [];

  async start() {
    const deliver = this.onmessage;
    this.onmessage = (message) => {
      if (message.error) this.heard.push(message.error.code);
      deliver(message);
    };
    await super.start();
  }

  async send(message) {
    this.heard.push(message.method);
    await super.send(message);
  }
}

async function converse(command, mode, talk) {
  const client = newClient(mode);
  const transport = new StdioClientTransport(parameters(command));
  let complaints = '';
  transport.stderr.on('data', (bytes) => (complaints += bytes));
  client.onerror = (error) => (complaints += error.message);
  await client.connect(transport);
  try {
    await talk(client);
  } finally {
    await client.close();
  }
  assert.equal(complaints, '');
}

for (const [environment, command] of Object.entries(serverIn)) {
  for (const mode of ['legacy', 'auto']) {
    suite(`In ${environment} a client of the next generation, in its ${mode} mode,`, () => {
      test('finds a server of the present generation', () =>
        converse(command, mode, (client) => {
          assert.equal(client.getProtocolEra(), 'legacy');
          assert.equal(client.getServerVersion().name, 'Halvane');
        }));

      test('lists the three tools', () =>
        converse(command, mode, async (client) => {
          const { tools } = await client.listTools();
          assert.deepEqual(tools.map((tool) => tool.name), toolNames);
        }));

      for (const call of calls) {
        test(`calls ${nameOf(call)}`, () =>
          converse(command, mode, async (client) => {
            const { content, isError } = await client.callTool({ name: call.name, arguments: call.arguments });
            assert.ok(content[0].text.includes(call.holds), content[0].text);
            assert.equal(isError, false);
          }));
      }

      test('pings', () => converse(command, mode, (client) => client.ping()));
    });
  }

  suite(`In ${environment} the first words of a client of the next generation`, () => {
    const firstWords = async (mode) => {
      const client = newClient(mode);
      const transport = new OverheardTransport(parameters(command));
      await client.connect(transport);
      await client.close();
      return transport.heard;
    };

    test('are initialize in its legacy mode', async () => {
      assert.deepEqual(await firstWords('legacy'), ['initialize', 'notifications/initialized']);
    });

    test('are server/discover in its auto mode, and initialize when that is refused', async () => {
      const heard = await firstWords('auto');
      assert.deepEqual(heard, ['server/discover', -32601, 'initialize', 'notifications/initialized']);
    });
  });
}
