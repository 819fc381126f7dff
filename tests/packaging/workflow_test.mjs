// The workflows, as the parser of those who run them reads them.
//   node workflow_test.mjs SOURCE      in a folder where npm has installed the parser

import assert from 'node:assert/strict';
import { accessSync, constants, readFileSync, readdirSync } from 'node:fs';
import { register } from 'node:module';
import { join } from 'node:path';
import { test } from 'node:test';

// The parser imports its tables without saying that they are JSON, and Node wants that said.
const sayJson = `export const load = (url, context, next) =>
  next(url, url.endsWith('.json') ? { ...context, importAttributes: { type: 'json' } } : context);`;
register(`data:text/javascript,${encodeURIComponent(sayJson)}`);
const { NoOperationTraceWriter, convertWorkflowTemplate, parseWorkflow } = await import('@actions/workflow-parser');

const [, , source] = process.argv;
const folder = join(source, '.github/workflows');

async function faultsIn(name, content) {
  const { context, value } = parseWorkflow({ name, content }, new NoOperationTraceWriter());
  if (value) await convertWorkflowTemplate(context, value);
  return context.errors.getErrors().map((error) => error.message);
}

for (const name of readdirSync(folder)) {
  const content = readFileSync(join(folder, name), 'utf8');

  test(`${name} has no fault`, async () => assert.deepEqual(await faultsIn(name, content), []));

  test(`${name} pins its actions by hash, and says the version`, () => {
    const pinned = /^[\w-]+\/[\w-]+@[0-9a-f]{40} # v[\d.]+$/;
    for (const [, action] of content.matchAll(/uses: (.*)/g)) assert.match(action, pinned);
  });

  test(`${name} runs scripts that are there`, () => {
    const scripts = [...content.matchAll(/(?<![\w/])(script|tests\/packaging)\/[\w.-]+/g)].map(([script]) => script);
    assert.ok(content.includes(name === 'fuzz.yml' ? 'run: script/fuzz' : 'run: script/test --all'));
    for (const script of scripts) accessSync(join(source, script), script.includes('.') ? constants.R_OK : constants.X_OK);
  });

  test(`${name} limits the time of each job`, () => {
    const count = (pattern) => content.match(pattern).length;
    assert.equal(count(/^    timeout-minutes: \d+$/gm), count(/^    runs-on: /gm));
  });
}

const faulty = {
  'an unknown key': 'on: push\njobs: { a: { runs-on: x, stepps: [] } }',
  'a job without a runner': 'on: push\njobs: { a: { steps: [{ run: "true" }] } }',
  'an expression that does not end': 'on: push\njobs: { a: { runs-on: "${{ matrix.x", steps: [{ run: "true" }] } }',
};
for (const [fault, content] of Object.entries(faulty)) {
  test(`A workflow with ${fault} would be noticed`, async () => {
    assert.notDeepEqual(await faultsIn('faulty.yml', content), []);
  });
}
