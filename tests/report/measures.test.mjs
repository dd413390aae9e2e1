// What the page shows beside the sixteen parameters: explained variance, moments of the map, the best confound.
import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { browserFor, goTo, missingBrowser, openReport } from './browser.mjs';
import { cardNames } from './page_contents.mjs';
import { madeUp } from './runs.mjs';

describe('beside the sixteen parameters the page', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');

    test('shows the explained variance on every card and sorts by it', async () => {
        const run = madeUp('explained', { components: 6 });
        const page = await openReport(browser, run.report);
        const shown = await page.locator('.card-value').allTextContents();
        assert.deepEqual(
            shown,
            run.metrics.map((row) => `${Number(row.explained_variance).toFixed(1)} % of variance`),
        );
        assert.equal(await page.locator('#sort option:checked').textContent(), 'Explained variance'); // from the start
        const order = [...run.metrics].sort((a, b) => b.explained_variance - a.explained_variance);
        assert.deepEqual(
            await cardNames(page),
            order.map((row) => row.component),
        );
        await page.close();
    });

    test('names on the cards the confounds that are clearly correlated, and sorts by them', async () => {
        const run = madeUp('confounds', { components: 6 });
        const page = await openReport(browser, run.report);
        for (const { component, confound_name: name, confound_max_corr: strength } of run.metrics) {
            const text = await page.locator(`.card[data-component=${component}] .card-confound`).allTextContents();
            assert.deepEqual(text, strength < 0.3 ? [] : [`${name} |r| ${Number(strength).toFixed(2)}`], strength);
        }
        await page.selectOption('#sort', { label: 'Confound: largest |r|' });
        assert.deepEqual((await cardNames(page))[0], 'ICA_05');
        await page.close();
    });

    test('lists all of them for one component', async () => {
        const run = madeUp('listed', { components: 4 });
        const page = await openReport(browser, run.report, { at: '#/component/ICA_03' });
        const cell = (column) => page.locator(`.matches td[data-metric=${column}]`).textContent();
        assert.equal(await cell('explained_variance'), '10 %');
        assert.equal(await cell('map_skewness'), '1.5');
        assert.equal(await cell('map_kurtosis'), '5.5');
        assert.equal(await cell('confound_max_corr'), 'rot_z, |r| 0.3');
        await goTo(page, '#/methods');
        const columns = await page.locator('.parameter-list code').allTextContents();
        assert.deepEqual(columns.slice(16, 18), ['explained_variance', 'map_skewness']);
        await page.close();
    });

    test('lacks what an older result lacks', async () => {
        const run = madeUp('older-table', { components: 3, measures: false });
        const page = await openReport(browser, run.report);
        assert.equal((await page.locator('.card-value').allTextContents())[0], '');
        assert.equal(await page.locator('#sort option:checked').textContent(), 'Component number');
        const options = await page.locator('#sort option').allTextContents();
        assert.ok(!options.includes('Explained variance') && !options.some((title) => title.startsWith('Confound')));
        await goTo(page, '#/component/ICA_00');
        await page.locator('body[data-shown=ICA_00]').waitFor();
        assert.equal(await page.locator('.matches [data-metric=explained_variance]').count(), 0);
        assert.deepEqual(page.complaints, []);
        await page.close();
    });

    test('says what share of the variance over time was kept, and how it was compared', async () => {
        const run = madeUp('kept', {
            components: 3,
            settings: { DesignFormat: 'BIDS events' },
            facts: { RetainedVarianceOverTimePercent: 61.25, Confounds: ['rot_z', 'csf'] },
        });
        const page = await openReport(browser, run.report);
        const tile = page.locator('.tile', { hasText: 'Variance over time kept' });
        assert.match(await tile.textContent(), /61\.3 %eigenvalues 1 to 3; not counting the mean image$/);
        await goTo(page, '#/methods');
        const text = await page.locator('#methods-text').textContent();
        assert.match(text, /covariance \(61\.3 % of the variance over time\) and whitened\./);
        assert.match(
            text,
            /with 2 predictors \(the events of each trial type, convolved with a canonical double-gamma .* response\)\./,
        );
        assert.match(text, /They were also correlated with 2 confounds\./);
        assert.match(text, /variance explained by a component is the sum of squares of its map times its time course/);
        await page.close();
    });
});
