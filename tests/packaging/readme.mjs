import { readFileSync } from 'node:fs';
import { join } from 'node:path';

/// README.md taken apart.
export function readmeOf(source) {
  const text = readFileSync(join(source, 'README.md'), 'utf8');
  const blocks = [...text.matchAll(/^( *)```(\w+)\n([^]*?)^\1```$/gm)]
    .map(([, indent, language, content]) => ({ language, content: content.replaceAll(new RegExp(`^${indent}`, 'gm'), '') }));
  const prose = text.replace(/^( *)```\w+\n[^]*?^\1```$/gm, '');
  return {
    text,
    /// The contents of the blocks in this language.
    blocks: (language) => blocks.filter((block) => block.language === language).map((block) => block.content),
    /// What stands between two backquotes within a line; in a table a bar is written with a backslash.
    inline: [...prose.matchAll(/`([^`\n]+)`/g)].map(([, code]) => code.replaceAll('\\|', '|')),
  };
}
