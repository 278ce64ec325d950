// node build.mjs NODE_MODULES SHELL.CPP: bundles browser/ with the libraries in NODE_MODULES and writes the page's shell
// as a C++ source (shell.h declares what is in it).
import { createHash } from 'node:crypto';
import { existsSync, readFileSync, readdirSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { dirname, join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';

const [modules, output] = process.argv.slice(2);
const browser = join(dirname(fileURLToPath(import.meta.url)), 'browser');
const esbuild = createRequire(join(resolve(modules), 'here.js'))('esbuild');

// Of script and style the policy names hashes, so that nothing else is run or applied, whatever finds its way into the
// page.
function hash(text) {
  return `'sha256-${createHash('sha256').update(text).digest('base64')}'`;
}

function bundle(entry, options) {
  const result = esbuild.buildSync({
    entryPoints: [join(browser, entry)],
    bundle: true,
    minify: true,
    write: false,
    target: 'es2020',
    charset: 'ascii',
    legalComments: 'none', // licences() has them
    metafile: true,
    logLevel: 'warning',
    nodePaths: [resolve(modules)],
    ...options,
  });
  return { text: result.outputFiles[0].text.trim(), sources: Object.keys(result.metafile.inputs) };
}

// The licences of the libraries that these sources are from, which want to be where the libraries are.
function licences(sources) {
  const names = sources.map((path) => /.*node_modules\/((?:@[^/]+\/)?[^/]+)\//.exec(path)?.[1]).filter(Boolean);
  return [...new Set(names)]
    .sort()
    .map((name) => {
      const folder = join(resolve(modules), name);
      const { version, license } = JSON.parse(readFileSync(join(folder, 'package.json'), 'utf8'));
      const file = existsSync(folder) && readdirSync(folder).find((each) => /^(licen[cs]e|copy(ing|right))/i.test(each));
      const text = file ? readFileSync(join(folder, file), 'utf8').trim() : '';
      return `${name} ${version}, ${license}\n\n${text}\n`;
    })
    .join(`\n${'-'.repeat(72)}\n\n`)
    .replace(/\r/g, '')
    .replace(/[^\n\x20-\x7e]/g, '?')
    .replace(/</g, '(')
    .replace(/>/g, ')');
}

const { text: script, sources } = bundle('main.js', { format: 'iife' });
const { text: style } = bundle('style.css', {});
const policy = [
  "default-src 'none'",
  `script-src ${hash(script)}`,
  `style-src ${hash(style)}`,
  'img-src data: blob:',
  "base-uri 'none'",
  "form-action 'none'",
].join('; ');

const html = readFileSync(join(browser, 'page.html'), 'utf8');
const pieces = html.split(/<!-- (?:title|data) -->/);
if (pieces.length !== 3) throw new Error('page.html needs one place for the title and one for the data');
const fill = (text) =>
  text
    .replace('<!-- policy -->', () => policy)
    .replace('<!-- style -->', () => style)
    .replace('<!-- licences -->', () => licences(sources))
    .replace('<!-- script -->', () => script);

// A string literal of C++, in lines of a length that every compiler takes.
function literal(text) {
  const lines = [];
  for (let from = 0; from < text.length; from += 8000) {
    const line = text
      .slice(from, from + 8000)
      .replace(/[\\"?]/g, (c) => `\\${c}`)
      .replace(/\n/g, '\\n')
      .replace(/\t/g, '\\t');
    if (/[^\x20-\x7e]/.test(line)) throw new Error('the shell is not plain ASCII');
    lines.push(`    "${line}"`);
  }
  return lines.length > 0 ? lines.join('\n') : '    ""';
}

const names = ['kShellBeforeTitle', 'kShellBeforeData', 'kShellEnd'];
const definitions = pieces.map((text, i) => `const std::string_view ${names[i]} =\n${literal(fill(text))};\n`);
writeFileSync(
  output,
  `// Made by page/build.mjs.\n#include "page/shell.h"\n\nnamespace page {\n\n${definitions.join('\n')}\n}  // namespace page\n`,
);
console.log(`bundle: ${script.length} bytes`);
