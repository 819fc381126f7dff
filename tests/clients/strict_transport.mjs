import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { setTimeout } from 'node:timers/promises';
import { JSONRPCMessageSchema } from '@modelcontextprotocol/sdk/types.js';

const utf8 = new TextDecoder('utf-8', { fatal: true, ignoreBOM: true });
const longestGoodbye = 1000;

/// The server as a child process, for a client that forgives nothing. Every byte of its output must belong to a line
/// that the schemas accept as a message; standard error must stay empty; when its input ends, it must end within a
/// second and with status 0. The test fails when one of these does not hold.
export class StrictTransport {
  #command;
  #process;
  #ended;
  #rest = Buffer.alloc(0);
  #errors = '';

  constructor(command) {
    this.#command = command;
  }

  async start() {
    this.#process = spawn(this.#command[0], this.#command.slice(1), { stdio: 'pipe' });
    this.#ended = once(this.#process, 'close');
    this.#process.stdout.on('data', (bytes) => this.#take(bytes));
    this.#process.stderr.on('data', (bytes) => (this.#errors += bytes));
    this.#process.on('close', () => this.onclose?.());
    await once(this.#process, 'spawn');
  }

  async send(message) {
    if (!this.#process.stdin.write(JSON.stringify(message) + '\n')) await once(this.#process.stdin, 'drain');
  }

  async close() {
    this.#process.stdin.end();
    const ending = await Promise.race([this.#ended, setTimeout(longestGoodbye, 'still running', { ref: false })]);
    if (ending === 'still running') this.#process.kill('SIGKILL');
    assert.deepEqual(ending, [0, null], 'status and signal within a second of the end of input');
    assert.equal(this.#rest.toString(), '', 'output after the last message');
    assert.equal(this.#errors, '', 'standard error');
  }

  #take(bytes) {
    this.#rest = Buffer.concat([this.#rest, bytes]);
    for (let end = this.#rest.indexOf('\n'); end >= 0; end = this.#rest.indexOf('\n')) {
      this.#takeLine(this.#rest.subarray(0, end));
      this.#rest = this.#rest.subarray(end + 1);
    }
  }

  // A line that is not a message ends the conversation at once. The client would wait for the message forever.
  #takeLine(line) {
    try {
      this.onmessage?.(JSONRPCMessageSchema.parse(JSON.parse(utf8.decode(line))));
    } catch (error) {
      this.#process.kill();
      throw new Error(`Not a message: ${line}`, { cause: error });
    }
  }
}
