// Draws a conversation with the server about the example journal, as it would look in a terminal: the person's
// questions, the tools that the assistant calls, and the server's answers. The answers come from a run of the server.
//   node picture.mjs SERVER EXAMPLES >PICTURE

import { spawnSync } from 'node:child_process';
import { cpSync, mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';

const [, , server, examples] = process.argv;

const newest = '~/Documents/Halvane/2025/03/2025-03-20-launch.md';
const conversation = [
  ['Where did I write about the Seeschwalbe?', 'search_entries', { query: 'Seeschwalbe', limit: 2 }],
  ['Everything about Ida, please.', 'search_entries', { query: '', tag: '#Ida' }],
  ['Read me the newest entry about the boat.', 'read_entry', { path: newest }],
];

// The home folder of the run has a random name. The picture shows this one instead, and changes nothing else.
const homeInPicture = '/home/you';

function answers() {
  const home = mkdtempSync(join(tmpdir(), 'halvane-picture-'));
  try {
    cpSync(examples, home, { recursive: true });
    const calls = conversation.map(([, name, args], id) =>
      JSON.stringify({ jsonrpc: '2.0', id, method: 'tools/call', params: { name, arguments: args } }) + '\n');
    const env = { HOME: home, LC_ALL: 'en_US.UTF-8', TZ: 'Europe/Berlin' };
    const { stdout, error } = spawnSync(server, { env, input: calls.join(''), encoding: 'utf8' });
    if (error) throw error;
    return stdout.trimEnd().split('\n').map((line) =>
      JSON.parse(line).result.content[0].text.replaceAll(home, homeInPicture));
  } finally {
    rmSync(home, { recursive: true });
  }
}

const columns = 109;  // the longest line that names an entry
const lineHeight = 20;
const margin = 20;
const bar = 36;
const width = 904;

// The line as it is where it fits. A longer one is broken at blanks into lines of similar length.
function wrapped(line) {
  const room = Math.ceil(line.length / Math.ceil(line.length / columns)) + 8;
  const lines = [''];
  for (const word of line.split(' ')) {
    const longer = lines.at(-1) === '' ? word : `${lines.at(-1)} ${word}`;
    if (line.length <= columns || longer.length <= room) lines[lines.length - 1] = longer;
    else lines.push(word);
  }
  return lines;
}

const escaped = (text) => text.replaceAll('&', '&amp;').replaceAll('<', '&lt;').replaceAll('>', '&gt;');
const span = (style, text) => `<tspan class="${style}">${escaped(text)}</tspan>`;

// A line of an answer with its date, tags, path, field names and matches in colours.
function coloured(line, query) {
  const [, date, tags, rest] = /^(\[[^\]]*\])((?: #\S+)*)( .*)$/.exec(line) ?? [];
  if (date) return span('date', date) + span('tag', tags) + span('path', rest);
  const [, field, value] = /^(Date|Duration|Cleaned|Tags)(: .*)$/.exec(line) ?? [];
  if (field) return span('path', field) + escaped(value);
  return query ? line.split(query).map(escaped).join(span('match', query)) : escaped(line);
}

// A session as lines of the picture, each marked up; an empty one is left blank.
const session = (question, tool, args, answer) => [
  span('prompt', '❯ ') + span('question', question),
  span('call', `  ${tool} ${JSON.stringify(args)}`),
  '',
  ...answer.split('\n').flatMap(wrapped).map((line) => coloured(line, args.query)),
];

function picture(texts) {
  const lines = conversation.flatMap(([question, tool, args], at) =>
    [...(at > 0 ? ['', ''] : []), ...session(question, tool, args, texts[at])]);
  const y = (at) => bar + margin + lineHeight * at + 14;
  const drawn = lines.map((line, at) => line && `<text x="${margin}" y="${y(at)}" xml:space="preserve">${line}</text>`);
  const height = bar + 2 * margin + lineHeight * lines.length;
  return `<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 ${width} ${height}" width="${width}" height="${height}">
<title>Three questions about a journal, the tools that an assistant calls for them, and the server's answers</title>
<style>
  text { font: 13px/1 ui-monospace, SFMono-Regular, Menlo, Consolas, 'DejaVu Sans Mono', monospace; fill: #1f2328 }
  .window { fill: #ffffff; stroke: #d1d9e0 }
  .bar { fill: #f6f8fa }
  .edge { stroke: #d1d9e0 }
  .name, .call, .path { fill: #59636e }
  .question { font-weight: 600 }
  .prompt { fill: #8250df; font-weight: 600 }
  .date { fill: #0969da }
  .tag { fill: #1a7f37 }
  .match { fill: #9a6700; font-weight: 600 }
  @media (prefers-color-scheme: dark) {
    text { fill: #e6edf3 }
    .window { fill: #0d1117; stroke: #3d444d }
    .bar { fill: #151b23 }
    .edge { stroke: #3d444d }
    .name, .call, .path { fill: #9198a1 }
    .prompt { fill: #ab7df8 }
    .date { fill: #4493f8 }
    .tag { fill: #3fb950 }
    .match { fill: #d29922 }
  }
</style>
<rect class="window" x="0.5" y="0.5" width="${width - 1}" height="${height - 1}" rx="10"/>
<path class="bar" d="M1 ${bar} V11 A10 10 0 0 1 11 1 H${width - 11} A10 10 0 0 1 ${width - 1} 11 V${bar} Z"/>
<path class="edge" d="M1 ${bar}.5 H${width - 1}"/>
<circle cx="20" cy="18" r="6" fill="#ff5f57"/><circle cx="40" cy="18" r="6" fill="#febc2e"/><circle cx="60" cy="18" r="6" fill="#28c840"/>
<text class="name" x="${width / 2}" y="23" text-anchor="middle">halvane_mcp</text>
${drawn.filter(Boolean).join('\n')}
</svg>
`;
}

process.stdout.write(picture(answers()));
