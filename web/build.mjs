// Builds the page: one HTML file with the engine, the template of the report and the scripts inlined.
//
//   node build.mjs ENGINE_FOLDER TEMPLATE FILE
//
// Scripts run only if their hash is in the page's policy: its own, and those of the report, which the page shows.
import { createHash } from 'node:crypto';
import { mkdir, readFile, writeFile } from 'node:fs/promises';
import { dirname, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';
import { gunzipSync, gzipSync } from 'node:zlib';
import { build } from 'esbuild';

const here = dirname(fileURLToPath(import.meta.url));
const [engine, templateFile, target] = process.argv.slice(2).map((path) => resolve(path));

async function bundle(entry, extra = {}) {
    const result = await build({
        entryPoints: [`${here}/src/${entry}`],
        bundle: true,
        minify: true,
        write: false,
        target: 'es2022',
        charset: 'utf8',
        legalComments: 'inline',
        logLevel: 'warning',
        format: 'iife',
        ...extra,
    });
    return result.outputFiles[0].text;
}

const packed = (bytes) => gzipSync(bytes, { level: 9 }).toString('base64');
const hashOf = (script) => `'sha256-${createHash('sha256').update(script).digest('base64')}'`;

function reportScripts(template) {
    const block = (name) => {
        const base64 = template.match(new RegExp(`data-block="${name}">([^<]*)</script>`))[1];
        return gunzipSync(Buffer.from(base64, 'base64')).toString();
    };
    return [template.match(/<script>([\s\S]*?)<\/script>/)[1], block('app'), block('niivue')];
}

const [main, worker, styles, page, template, engineScript, wasm] = await Promise.all([
    bundle('main.ts'),
    bundle('engine/worker.ts'),
    bundle('style/page.css', { format: undefined }),
    readFile(`${here}/src/page.html`, 'utf8'),
    readFile(templateFile, 'utf8'),
    readFile(`${engine}/znica_web.js`, 'utf8'),
    readFile(`${engine}/znica_web.wasm`),
]);
const script = main.replaceAll('</script', '<\\/script');
const html = page
    .replace('<!-- hashes -->', () => [script, ...reportScripts(template)].map(hashOf).join(' '))
    .replace('/* styles */', () => styles)
    .replace('<!-- wasm -->', () => packed(wasm))
    .replace('<!-- worker -->', () => packed(`${engineScript}\n${worker}`))
    .replace('<!-- template -->', () => packed(template))
    .replace('/* page */', () => script);
await mkdir(dirname(target), { recursive: true });
await writeFile(target, html);
const kib = (text) => `${(text.length / 1024).toFixed(0)} KiB`;
console.log(`${target}: ${kib(html)} (WebAssembly ${kib(wasm)}, report ${kib(template)}, before compression)`);
