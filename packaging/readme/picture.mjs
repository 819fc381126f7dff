// A conversation with the server about the example journal, as a picture: what a person asks, the tool that an assistant
// calls for it, and what the server answers. The answers are those of the server that is run here.
//   node picture.mjs SERVER EXAMPLES >PICTURE

import { spawnSync } from 'node:child_process';
import { cpSync, mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';

const [, , server, examples] = process.argv;

const newest = '~/Documents/Halvane/2025/03/2025-03-20-launch.md';
const conversation = [
  ['Where did I write about the Seeschwalbe?', 'search_entries', { query: 'SEESCHWALBE', limit: 2 }],
  ['Everything about Ida, please.', 'search_entries', { query: '', tag: '#Ida' }],
  ['Read me the newest one about the boat.', 'read_entry', { path: newest }],
];

// The home folder of the run has a name by chance, which is the one thing that is changed in the answers.
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

const columns = 102;
const lineHeight = 19;
const margin = 24;
const width = 880;

// A text's lines, broken at blanks where they are too long for the picture.
function wrapped(text) {
  return text.split('\n').flatMap((line) => {
    const lines = [''];
    for (const word of line.split(' ')) {
      const longer = lines.at(-1) ? `${lines.at(-1)} ${word}` : word;
      if (longer.length <= columns || !lines.at(-1)) lines[lines.length - 1] = longer;
      else lines.push(word);
    }
    return lines;
  });
}

const escaped = (text) => text.replaceAll('&', '&amp;').replaceAll('<', '&lt;').replaceAll('>', '&gt;');

function picture(texts) {
  const drawn = [];
  let y = margin;
  const write = (style, text, x = margin) => {
    y += lineHeight;
    if (text) drawn.push(`<text class="${style}" x="${x}" y="${y}" xml:space="preserve">${escaped(text)}</text>`);
  };
  conversation.forEach(([question, tool, args], at) => {
    if (at > 0) y += lineHeight;
    drawn.push(`<rect class="bubble" x="${margin - 10}" y="${y}" width="${20 + 9 * question.length}" height="28" rx="8"/>`);
    write('question', question);
    y += 12;
    write('tool', `${tool} ${JSON.stringify(args)}`);
    y += 4;
    for (const line of wrapped(texts[at])) write('answer', line, margin + 16);
  });
  const height = y + margin;
  return `<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 ${width} ${height}" width="${width}" height="${height}">
<title>A person asks three questions about a journal, and the server's answers</title>
<style>
  .paper { fill: #ffffff; stroke: #d0d7de }
  .bubble { fill: #ddf4ff }
  text { fill: #1f2328; font: 13px ui-monospace, SFMono-Regular, Menlo, Consolas, 'DejaVu Sans Mono', monospace }
  .question { font: 600 15px system-ui, -apple-system, 'Segoe UI', sans-serif }
  .tool { fill: #656d76 }
  @media (prefers-color-scheme: dark) {
    .paper { fill: #0d1117; stroke: #3d444d }
    .bubble { fill: #12304f }
    text { fill: #e6edf3 }
    .tool { fill: #9198a1 }
  }
</style>
<rect class="paper" x="0.5" y="0.5" width="${width - 1}" height="${height - 1}" rx="10"/>
${drawn.join('\n')}
</svg>
`;
}

process.stdout.write(picture(answers()));
