// A client on the official SDK that checks every byte.

import assert from 'node:assert/strict';
import { suite, test } from 'node:test';
import { Client } from '@modelcontextprotocol/sdk/client/index.js';
import { EmptyResultSchema, ErrorCode, LATEST_PROTOCOL_VERSION } from '@modelcontextprotocol/sdk/types.js';
import { calls, nameOf, serverIn, toolNames } from './journal_home.mjs';
import { StrictTransport } from './strict_transport.mjs';

const newClient = () =>
  new Client({ name: 'strict', version: '1' }, { capabilities: { roots: { listChanged: true } } });

// Holds one conversation from the first message to the end of the server.
async function converse(command, talk) {
  const client = newClient();
  const errors = [];
  client.onerror = (error) => errors.push(error.message);
  await client.connect(new StrictTransport(command));
  try {
    await talk(client);
  } finally {
    await client.close();
  }
  return errors;
}

async function converseWithoutErrors(command, talk) {
  assert.deepEqual(await converse(command, talk), []);
}

for (const [environment, command] of Object.entries(serverIn)) {
  suite(`In ${environment} a strict client`, () => {
    test('connects, and is told the server\'s name and that it has tools', () =>
      converseWithoutErrors(command, (client) => {
        assert.equal(client.getServerVersion().name, 'Halvane');
        assert.deepEqual(client.getServerCapabilities(), { tools: {} });
      }));

    test('gets the protocol version that it asks for', async () => {
      const client = newClient();
      const transport = new StrictTransport(command);
      let agreed;
      transport.setProtocolVersion = (version) => (agreed = version);
      await client.connect(transport);
      await client.close();
      assert.equal(agreed, LATEST_PROTOCOL_VERSION);
    });

    test('lists the three tools, all on one page', () =>
      converseWithoutErrors(command, async (client) => {
        const { tools, nextCursor } = await client.listTools();
        assert.deepEqual(tools.map((tool) => tool.name), toolNames);
        assert.equal(nextCursor, undefined);
      }));

    for (const call of calls) {
      test(`calls ${nameOf(call)}`, () =>
        converseWithoutErrors(command, async (client) => {
          const { content, isError } = await client.callTool({ name: call.name, arguments: call.arguments });
          assert.equal(content.length, 1);
          assert.equal(content[0].type, 'text');
          assert.ok(content[0].text.includes(call.holds), content[0].text);
          assert.equal(isError, false);
        }));
    }

    test('calls a tool without naming any arguments', () =>
      converseWithoutErrors(command, async (client) => {
        const { content } = await client.callTool({ name: 'list_recent' });
        assert.match(content[0].text, /^\[/);
      }));

    test('pings', () =>
      converseWithoutErrors(command, async (client) => {
        assert.deepEqual(await client.ping(), {});
      }));

    test('cancels a call, and the next one is answered', async () => {
      const errors = await converse(command, async (client) => {
        const abort = new AbortController();
        const call = client.callTool({ name: 'list_recent' }, undefined, { signal: abort.signal });
        abort.abort('changed my mind');
        await assert.rejects(call, /changed my mind/);
        assert.deepEqual(await client.ping(), {});
      });
      // The answer comes all the same, and nobody is waiting for it any more.
      assert.equal(errors.length, 1);
      assert.match(errors[0], /^Received a response for an unknown message ID/);
    });

    for (const method of ['resources/list', 'prompts/list', 'completion/complete', 'no/such/method']) {
      test(`asks for ${method} and is told that there is no such method`, () =>
        converseWithoutErrors(command, (client) =>
          assert.rejects(client.request({ method }, EmptyResultSchema), {
            code: ErrorCode.MethodNotFound,
            message: `MCP error -32601: Method not found: ${method}`,
          })));
    }

    test('tells what the server need not know, without an answer', () =>
      converseWithoutErrors(command, async (client) => {
        await client.notification({ method: 'notifications/roots/list_changed' });
        assert.deepEqual(await client.ping(), {});
      }));

    test('connects again after it has closed', async () => {
      const client = newClient();
      for (let times = 0; times < 3; ++times) {
        await client.connect(new StrictTransport(command));
        const answer = await client.ping();
        await client.close();
        assert.deepEqual(answer, {});
      }
    });
  });
}
