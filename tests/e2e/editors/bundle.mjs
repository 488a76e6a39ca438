// node bundle.mjs OUT_DIR NODE_MODULES: each editor in src/ bundled with esbuild into one
// self-contained OUT_DIR/<editor>.html (script and styles inline), so that a server answering
// every request with one page can show it. A page is rewritten only when it changed.
import { createRequire } from 'node:module';
import { readFileSync, writeFileSync, mkdirSync } from 'node:fs';
import { basename, dirname, extname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

const [outDir, nodeModules] = process.argv.slice(2);
const here = dirname(fileURLToPath(import.meta.url));
const esbuild = createRequire(join(nodeModules, 'noop.js'))('esbuild');

// Each editor's entry in src/ and the name its page carries until the script runs.
const editors = {
  prosemirror: ['prosemirror.js', 'ProseMirror'],
  quill: ['quill.js', 'Quill'],
  lexical: ['lexical.js', 'Lexical'],
  slate: ['slate.jsx', 'Slate'],
  ckeditor5: ['ckeditor5.js', 'CKEditor 5'],
  tinymce: ['tinymce.js', 'TinyMCE'],
};

const result = await esbuild.build({
  entryPoints: Object.fromEntries(
    Object.entries(editors).map(([name, [file]]) => [name, join(here, 'src', file)])),
  outdir: join(outDir, '.bundle'),
  bundle: true,
  minify: true,
  format: 'iife',
  jsx: 'automatic',
  nodePaths: [nodeModules],
  define: { 'process.env.NODE_ENV': '"production"' },
  logLevel: 'warning',
  write: false,
});

const outputs = {};
for (const file of result.outputFiles) {
  const name = basename(file.path, extname(file.path));
  (outputs[name] ??= {})[extname(file.path)] = file.text;
}

// A page whose script failed keeps the editor's name as its title.
const page = (title, css, js) => `<!doctype html>
<html lang="en"><head><meta charset="utf-8"><link rel="icon" href="data:,"><title>${title}</title>
<style>
${css.replaceAll('</style', '<\\/style')}
html, body { margin: 0; height: 100%; }
body { font: 18px/1.5 sans-serif; }
#editor, .ql-container { min-height: 100%; font: inherit; }
[contenteditable] { min-height: 100vh; box-sizing: border-box; padding: 12px 24px; outline: none; }
p { margin: 0 0 0.6em; }
</style></head>
<body><div id="editor"></div>
<script>${js.replaceAll('</script', '<\\/script')}</script>
</body></html>
`;

mkdirSync(outDir, { recursive: true });
for (const [name, [, title]] of Object.entries(editors)) {
  const { '.js': js, '.css': css = '' } = outputs[name];
  const path = join(outDir, name + '.html');
  const html = page(title, css, js);
  let old = null;
  try { old = readFileSync(path, 'utf8'); } catch {}
  if (old !== html) writeFileSync(path, html);
  console.log(`${name}.html ${Math.round(Buffer.byteLength(html) / 1024)} KiB`);
}
