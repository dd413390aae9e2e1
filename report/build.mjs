// Builds the templates of the report and, in the same folder, of the page over all runs of a study and of that of a group
// analysis: HTML files with the styles, the app and, in those with maps, NiiVue inlined, and the scripts compressed as
// the data will be.
// `node build.mjs FILE` (dist/report-template.html); beside it, the licences of what was inlined: report-notices.txt.
//
// esbuild rather than a bundler for websites, because the result is two scripts as text, not a folder to serve.
import { mkdir, readFile, writeFile } from 'node:fs/promises';
import { dirname, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';
import { gzipSync } from 'node:zlib';
import { build } from 'esbuild';
import { notices } from './notices.mjs';

const here = dirname(fileURLToPath(import.meta.url));
const target = resolve(process.argv[2] ?? `${here}/dist/report-template.html`);

const metafiles = [];
async function bundle(entry, extra = {}) {
    const result = await build({
        entryPoints: [`${here}/src/${entry}`],
        bundle: true,
        minify: true,
        write: false,
        metafile: true,
        target: 'es2022',
        charset: 'utf8',
        legalComments: 'inline',
        logLevel: 'warning',
        format: 'iife',
        ...extra,
    });
    metafiles.push(result.metafile);
    return result.outputFiles[0].text;
}

const packed = (text) => gzipSync(text, { level: 9 }).toString('base64');

const [loader, app, study, group, niivue, styles, studyStyles, groupStyles, page] = await Promise.all([
    bundle('loader.ts'),
    bundle('app.ts'),
    bundle('study_app.ts'),
    bundle('group_app.ts'),
    bundle('niivue_bundle.ts', { globalName: 'znNiivue' }),
    bundle('style/page.css', { format: undefined }),
    bundle('style/study_page.css', { format: undefined }),
    bundle('style/group_page.css', { format: undefined }),
    readFile(`${here}/src/page.html`, 'utf8'),
]);
const template = (css, script, library) =>
    page
        .replace('/* styles */', () => css)
        .replace('<!-- app -->', () => packed(script))
        .replace('<!-- niivue -->', () => packed(library))
        .replace('/* loader */', () => loader.replaceAll('</script', '<\\/script'));
const html = template(styles, app, niivue);
await mkdir(dirname(target), { recursive: true });
await writeFile(target, html);
await writeFile(`${dirname(target)}/report-notices.txt`, await notices(metafiles));
await writeFile(resolve(dirname(target), 'study-template.html'), template(studyStyles, study, ''));
await writeFile(resolve(dirname(target), 'group-template.html'), template(groupStyles, group, niivue));
console.log(
    `${target}: ${(html.length / 1024).toFixed(0)} KiB (app ${(app.length / 1024).toFixed(0)}, `
        + `NiiVue ${(niivue.length / 1024).toFixed(0)}, before compression)`,
);
