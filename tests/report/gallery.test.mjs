// The cards of the gallery: complete, sorted, filtered, and drawn at full size.
import assert from 'node:assert/strict';
import { before, describe, test } from 'node:test';
import { browserFor, goTo, missingBrowser, openReport, showComponent } from './browser.mjs';
import { COLUMNS } from './made_up_run.mjs';
import { cardNames } from './page_contents.mjs';
import { analysed, madeUp } from './runs.mjs';

const NAMES = (count) => Array.from({ length: count }, (_, c) => `ICA_${String(c).padStart(2, '0')}`);

const browsers = { webgl2: browserFor('webgl2'), canvas: browserFor('canvas') };
let thirty;
let one;
let twoHundred;

before(() => {
    if (missingBrowser) return;
    thirty = madeUp('thirty', { components: 30 });
    one = madeUp('one', { components: 1, design: false });
    twoHundred = madeUp('two-hundred', { components: 200, grid: 'medium' });
});

for (const renderer of ['webgl2', 'canvas']) {
    describe(`with ${renderer} the gallery`, { skip: missingBrowser }, () => {
        const browser = browsers[renderer];

        for (const [count, run] of [
            [1, () => one],
            [30, () => thirty],
            [200, () => twoHundred],
        ]) {
            test(`shows a card for each of ${count} components`, async () => {
                const page = await openReport(browser, run().report);
                assert.deepEqual(await cardNames(page), NAMES(count));
                assert.deepEqual(page.complaints, []);
                await page.close();
            });
        }

        test('sorts the cards by a parameter in both directions, missing values last', async () => {
            const page = await openReport(browser, thirty.report);
            const numbered = thirty.metrics.filter((row) => row.kurtosis !== 'n/a');
            const ascending = [...numbered].sort((a, b) => a.kurtosis - b.kurtosis).map((row) => row.component);
            await page.selectOption('#sort', { label: 'Kurtosis' });
            assert.deepEqual(await cardNames(page), [...ascending, 'ICA_02']);
            await page.click('#direction');
            assert.deepEqual(await cardNames(page), [...ascending.reverse(), 'ICA_02']);
            assert.equal((await page.locator('.card-value').first().textContent()).split(' ')[0], 'Kurtosis');
            await page.close();
        });

        test('filters the cards by any of the sixteen parameters', async () => {
            const page = await openReport(browser, thirty.report);
            await page.click('#add-filter');
            for (const [position, column] of COLUMNS.entries()) {
                await page.selectOption('.filter select', String(position));
                await page.fill('.filter input >> nth=0', '0.3');
                await page.fill('.filter input >> nth=1', '0.7');
                const expected = thirty.metrics.filter((row) => row[column] >= 0.3 && row[column] <= 0.7);
                assert.deepEqual(
                    await cardNames(page),
                    expected.map((row) => row.component),
                    column,
                );
            }
            await page.close();
        });
    });
}

describe('the gallery', { skip: missingBrowser }, () => {
    const browser = browsers.webgl2;

    test('draws the cards of the overview at full size after other views too', async () => {
        const page = await openReport(browser, thirty.report, { at: '#/component/ICA_04' });
        // As many turns as the page itself needs to draw five cards.
        const away = () =>
            page.evaluate(async () => {
                for (let turn = 0; turn < 5; ++turn) {
                    await new Promise((done) => requestIdleCallback(done, { timeout: 500 }));
                }
            });
        const allDrawn = async () => {
            await goTo(page, '#/');
            await page.waitForFunction(
                () => {
                    const pictures = [...document.querySelectorAll('.card[data-drawn] canvas')];
                    return pictures.length === 120 && pictures.every(({ width }) => width > 30);
                },
                null,
                { timeout: 20000 },
            );
        };
        await away();
        await allDrawn();
        await showComponent(page, 'ICA_05', 'webgl2');
        await page.getByRole('button', { name: /colours$/ }).click();
        await away();
        await allDrawn();
        await page.close();
    });

    test('calls only a perfect stability 1', async () => {
        const Components = [0.996, 0.99996, 1].map((StabilityIndex, c) => ({
            Name: `ICA_0${c}`,
            StabilityIndex,
            StabilityRuns: 5,
        }));
        const run = madeUp('stable', { components: 3, facts: { Repeats: { Runs: 5 }, Components } });
        const page = await openReport(browser, run.report);
        const cards = (await page.locator('.card-value').allTextContents()).map((text) => /stability .*/.exec(text)[0]);
        assert.deepEqual(cards, ['stability 0.996', 'stability 0.999', 'stability 1']);
        await page.close();
    });

    test('shows the stability over the repeats and sorts by it, if there were any', async () => {
        const real = analysed();
        const page = await openReport(browser, real.report);
        await page.selectOption('#sort', { label: 'Stability over repeats (Iq)' });
        const descending = [...real.metrics]
            .sort((a, b) => b.stability_iq - a.stability_iq)
            .map((row) => row.component);
        assert.deepEqual(await cardNames(page), descending);
        await showComponent(page, 'ICA_00', 'webgl2');
        const text = await page.locator('td[data-metric=stability_iq]').textContent();
        const [, index, runs, all] = /^Iq ([0-9.]+), in (\d) of (\d) runs$/.exec(text);
        assert.ok(Math.abs(index - real.metrics[0].stability_iq) < 1e-3, text);
        assert.deepEqual([runs, all], [real.metrics[0].stability_runs, '3']);
        await page.close();

        const once = await openReport(browser, thirty.report);
        assert.equal(await once.locator('#sort option[value=stability]').count(), 0);
        await showComponent(once, 'ICA_00', 'webgl2');
        assert.equal(await once.locator('td[data-metric=stability_iq]').count(), 0);
        await once.close();
    });
});
