// The protocol's conformance suite, which also holds every message against the protocol's schema. It speaks HTTP, so
// a bridge stands between it and the server.

import assert from 'node:assert/strict';
import { execFile, spawn } from 'node:child_process';
import { once } from 'node:events';
import { createServer } from 'node:net';
import { after, before, suite, test } from 'node:test';
import { promisify } from 'node:util';
import { home, serverIn } from './journal_home.mjs';

const conformance = 'node_modules/@modelcontextprotocol/conformance/dist/index.js';
const supergateway = 'node_modules/supergateway/dist/index.js';
const scenarios = ['server-initialize', 'ping', 'tools-list', 'tools-call-simple-text'];
const env = { HOME: home, PATH: process.env.PATH };

async function freePort() {
  const server = createServer().listen(0);
  await once(server, 'listening');
  const { port } = server.address();
  server.close();
  return port;
}

// Starts the bridge in front of the server, and returns it when it listens.
async function startBridge(command, port) {
  const args = ['--stdio', command.map((word) => `'${word}'`).join(' '), '--stateful', '--port', port];
  const bridge = spawn(process.execPath, [supergateway, '--outputTransport', 'streamableHttp', ...args], { env });
  for await (const text of bridge.stdout.iterator({ destroyOnReturn: false })) {
    if (`${text}`.includes('Listening')) break;
  }
  bridge.stdout.resume();
  return bridge;
}

for (const [environment, command] of Object.entries(serverIn)) {
  suite(`In ${environment} the conformance suite`, () => {
    let bridge;
    let port;
    before(async () => {
      port = await freePort();
      bridge = await startBridge(command, port);
    });
    after(() => bridge.kill());

    for (const scenario of scenarios) {
      test(`passes ${scenario}`, async () => {
        const args = ['server', '--url', `http://localhost:${port}/mcp`, '--scenario', scenario];
        const { stdout } = await promisify(execFile)(process.execPath, [conformance, ...args], { env, timeout: 60000 });
        assert.match(stdout, /wire-schema-valid.*SUCCESS/);
        assert.match(stdout, /\b0 failed, 0 warnings/);
      });
    }
  });
}
