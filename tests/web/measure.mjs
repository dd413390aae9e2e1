// Prints what runs in the tab cost, and `znica run --threads 1` beside them. The page is build/web/znica.html
// (scripts/web_build), the command that of the variable ZNICA, or build/release/bin/znica.
//
//   node measure.mjs IMAGE [COMPONENTS [SEEDS]]        30 components, seeds 1 to 5
//
//   load           of the machine in the last minute
//   read, run      seconds from choosing the image to its mask, and from Run to the result
//   cpu            seconds of processor time of the workers, for both; it does not depend on what else the machine does
//   report         seconds from the result to the first card of the report
//   task, cpu ms   the longest task of the page's main thread in milliseconds: by the clock, and of processor time
//   gap            the longest time between two frames, in milliseconds
//   module         memory of the WebAssembly module, MiB; renderer: peak of the tab's process
//   command        seconds of the command; cpu: its processor time; and its peak in MiB
import { execFileSync } from 'node:child_process';
import { readdirSync, readFileSync } from 'node:fs';
import { loadavg } from 'node:os';
import { basename, join, resolve } from 'node:path';
import { argv } from 'node:process';
import { test } from 'node:test';
import { browserFor } from '../report/browser.mjs';
import { ZNICA } from '../report/runs.mjs';
import { choose, heapOf, openPage, scratchFolder, setOptions } from './page.mjs';
import { COUNT_FRAMES, recordThreads } from './threads.mjs';

const image = resolve(argv[2]);
const components = argv[3] ?? '30';
const seeds = Number(argv[4] ?? 5);
const browser = browserFor('canvas');
const scratch = scratchFolder();

// Of the renderer processes of this browser, which are grandchildren of this one.
function peakOfRenderers() {
    const parents = new Map();
    const peaks = new Map();
    for (const id of readdirSync('/proc').filter((name) => /^\d+$/.test(name))) {
        try {
            const status = readFileSync(`/proc/${id}/status`, 'utf8');
            parents.set(id, /^PPid:\s*(\d+)/m.exec(status)[1]);
            if (!readFileSync(`/proc/${id}/cmdline`, 'utf8').includes('--type=renderer')) continue;
            peaks.set(id, Number(/^VmHWM:\s*(\d+)/m.exec(status)[1]) / 1024);
        } catch {} // has ended
    }
    const isOurs = (id) => id === String(process.pid) || (parents.has(id) && isOurs(parents.get(id)));
    return Math.max(...[...peaks].filter(([id]) => isOurs(id)).map(([, peak]) => peak));
}

const secondsSince = (begun) => (performance.now() - begun) / 1000;

// What the command needs: seconds, and MiB as its record says.
function command(seed) {
    const out = join(scratch, `command-${seed}`);
    const options = ['--components', components, '--seed', String(seed), '--threads', '1', '--quiet'];
    const begun = performance.now();
    const timed = ['-c', '"$@" && times', 'sh', ZNICA, 'run', image, '--out', out, ...options];
    const times = execFileSync('sh', timed, { encoding: 'utf8' }).trim().split('\n').pop();
    const seconds = secondsSince(begun);
    const processor = [...times.matchAll(/(\d+)m([\d.]+)s/g)].reduce(
        (sum, [, min, s]) => sum + 60 * min + Number(s),
        0,
    );
    const record = readdirSync(out).find((name) => name.endsWith('_decomposition.json'));
    const { PeakMemoryBytes } = JSON.parse(readFileSync(join(out, record), 'utf8'));
    return [seconds.toFixed(1), processor.toFixed(1), (PeakMemoryBytes / 2 ** 20).toFixed(0)];
}

async function inTab(seed) {
    const page = await openPage(browser, { first: COUNT_FRAMES });
    const endRecord = await recordThreads(browser, page);
    const chosen = performance.now();
    await choose(page, [image]);
    const read = secondsSince(chosen);
    await setOptions(page, { '--components': components, '--seed': seed });
    const begun = performance.now();
    await page.locator('#run').click();
    await page.locator('iframe.report').waitFor();
    const run = secondsSince(begun);
    await page.frameLocator('iframe.report').locator('.card[data-drawn]').first().waitFor();
    const report = secondsSince(begun) - run;
    await page.waitForTimeout(2000); // the other cards
    const { clock, processor, gap, workers } = await endRecord();
    const module = (await heapOf(page)) / 2 ** 20;
    const row = [read, run, workers, report].map((seconds) => seconds.toFixed(1));
    row.push(...[clock, processor, gap, module, peakOfRenderers()].map((number) => number.toFixed(0)));
    await page.close();
    return row;
}

test(`${components} components of ${basename(image)}`, async () => {
    const names = 'load,seed,read,run,cpu,report,task,cpu ms,gap,module,renderer,command,cpu,MiB'.split(',');
    const print = (cells) => console.log(cells.map((cell) => String(cell).padStart(9)).join(''));
    print(names);
    for (let seed = 1; seed <= seeds; ++seed) {
        const load = loadavg()[0].toFixed(1);
        print([load, seed, ...(await inTab(seed)), ...command(seed)]);
    }
});
