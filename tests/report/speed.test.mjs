// How long the page takes, as diagnostics, and how large it is.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { before, describe, test } from 'node:test';
import { browserFor, measures, missingBrowser, openReport, showComponent } from './browser.mjs';
import { checkCrosshair } from './page_contents.mjs';
import { analysed, madeUp } from './runs.mjs';

const browsers = { webgl2: browserFor('webgl2'), canvas: browserFor('canvas') };
let real;
let twoHundred;

before(() => {
    if (missingBrowser) return;
    real = analysed();
    twoHundred = madeUp('two-hundred', { components: 200, grid: 'medium' });
});

for (const renderer of ['webgl2', 'canvas']) {
    describe(`with ${renderer} the page`, { skip: missingBrowser }, () => {
        const browser = browsers[renderer];

        test('reports how long it takes', async (t) => {
            for (const [name, run] of [
                ['sample', real],
                ['200 components', twoHundred],
            ]) {
                const page = await openReport(browser, run.report);
                await page.waitForFunction(() => performance.getEntriesByName('first view').length > 0);
                const [first] = await measures(page, 'first view');
                await page.selectOption('#sort', 'order');
                await showComponent(page, 'ICA_00', renderer);
                for (let i = 1; i < 8; ++i) {
                    await page.keyboard.press('ArrowRight');
                    await page.locator(`body[data-shown="ICA_0${i}"]`).waitFor();
                }
                const changes = (await measures(page, 'component change')).slice(1).sort((a, b) => a - b);
                const megabytes = (readFileSync(run.report).length / 1e6).toFixed(2);
                t.diagnostic(
                    `${name}, ${renderer}: ${megabytes} MB, first view ${first} ms, component change `
                        + `${changes[changes.length >> 1]} ms (median of ${changes.length})`,
                );
                assert.equal(changes.length, 7);
                await page.close();
            }
        });
    });
}

describe('the page', { skip: missingBrowser }, () => {
    const browser = browsers.webgl2;

    test('stays under 15 MB for 30 components of a whole brain at 2 mm', async (t) => {
        const brain = madeUp('brain', { components: 30, grid: 'brain' }); // noise compresses worst
        const bytes = readFileSync(brain.report).length;
        const page = await openReport(browser, brain.report);
        await page.waitForFunction(() => performance.getEntriesByName('first view').length > 0);
        const [first] = await measures(page, 'first view');
        await showComponent(page, 'ICA_00', 'webgl2');
        for (const name of ['ICA_01', 'ICA_02', 'ICA_03']) {
            await page.keyboard.press('ArrowRight');
            await page.locator(`body[data-shown="${name}"]`).waitFor();
        }
        const changes = (await measures(page, 'component change')).slice(1);
        await checkCrosshair(page, brain, 3);
        t.diagnostic(
            `whole brain: ${(bytes / 1e6).toFixed(2)} MB, first view ${first} ms, `
                + `component changes ${changes.join(', ')} ms`,
        );
        assert.ok(bytes < 15e6, `${bytes} bytes`);
        await page.close();
    });
});
