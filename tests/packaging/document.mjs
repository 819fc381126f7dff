import { readFileSync } from 'node:fs';

/// The Markdown document at `path`, taken apart.
export function documentAt(path) {
  const text = readFileSync(path, 'utf8');
  const fenced = /^( *)```(\w+)\n([^]*?)^\1```$/gm;
  const blocks = [...text.matchAll(fenced)]
    .map(([, indent, language, content]) => ({ language, content: content.replaceAll(new RegExp(`^${indent}`, 'gm'), '') }));
  const prose = text.replace(fenced, '');
  return {
    text,
    /// The contents of the blocks in this language.
    blocks: (language) => blocks.filter((block) => block.language === language).map((block) => block.content),
    /// The shell commands in its blocks, one from each line, without comments.
    commands: blocks.filter(({ language }) => language === 'sh').flatMap(({ content }) => content.split('\n'))
      .map((line) => line.replace(/ +#.*/, '')).filter(Boolean),
    /// The texts in backquotes within a line. A table writes a bar in them as a backslash and a bar.
    inline: [...prose.matchAll(/`([^`\n]+)`/g)].map(([, code]) => code.replaceAll('\\|', '|')),
    /// The relative addresses that it links to or shows, without what follows a "#".
    links: [...prose.matchAll(/\]\(([^)\s#]+)[^)\s]*\)/g)].map(([, address]) => address)
      .filter((address) => !address.includes('://')),
  };
}
