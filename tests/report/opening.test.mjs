// The report opened from disk: no network, no errors, legible in either theme and by keyboard.
import assert from 'node:assert/strict';
import { before, describe, test } from 'node:test';
import { browserFor, goTo, missingBrowser, openReport, screenshot, showComponent } from './browser.mjs';
import { analysed, madeUp } from './runs.mjs';

const browsers = { webgl2: browserFor('webgl2'), canvas: browserFor('canvas') };
let real;

before(() => {
    if (!missingBrowser) real = analysed();
});

for (const renderer of ['webgl2', 'canvas']) {
    describe(`with ${renderer} the page`, { skip: missingBrowser }, () => {
        const browser = browsers[renderer];

        test('opens from disk without errors, warnings or requests', async () => {
            const page = await openReport(browser, real.report);
            await screenshot(page, `gallery-${renderer}`);
            await showComponent(page, 'ICA_03', renderer);
            await page.selectOption('#compare', '1');
            await page
                .locator(`.brain:nth-child(2) .planes[data-renderer="${renderer}"]:not(.planes-waiting)`)
                .waitFor();
            await screenshot(page, `compare-${renderer}`);
            await goTo(page, '#/methods');
            await page.locator('#methods-text').waitFor();
            await screenshot(page, `methods-${renderer}`);
            assert.deepEqual(page.complaints, []);
            assert.deepEqual(page.requests, [`file://${real.report}`]);
            await page.close();
        });
    });
}

describe('the page', { skip: missingBrowser }, () => {
    const browser = browsers.webgl2;

    test('is legible in dark colours and in a narrow window', async () => {
        const dark = await openReport(browser, real.report, { dark: true });
        assert.equal(await dark.evaluate(() => document.documentElement.dataset.theme), 'dark');
        await screenshot(dark, 'gallery-dark');
        await showComponent(dark, 'ICA_02', 'webgl2');
        await screenshot(dark, 'component-dark');
        await dark.close();
        const narrow = await openReport(browser, real.report, { viewport: { width: 420, height: 900 } });
        await screenshot(narrow, 'gallery-narrow');
        await showComponent(narrow, 'ICA_02', 'webgl2');
        await screenshot(narrow, 'component-narrow');
        assert.ok(
            await narrow.evaluate(() => document.documentElement.scrollWidth <= innerWidth),
            'no horizontal scrolling',
        );
        await narrow.close();
    });

    test('is printed in light colours', async () => {
        const page = await openReport(browser, real.report, { dark: true });
        await page.evaluate(() => dispatchEvent(new Event('beforeprint')));
        assert.equal(await page.evaluate(() => document.documentElement.dataset.theme), 'light');
        await page.emulateMedia({ media: 'print' });
        await screenshot(page, 'gallery-print');
        assert.equal(await page.locator('.gallery-controls').isVisible(), false);
        await page.evaluate(() => dispatchEvent(new Event('afterprint')));
        await page.close();
    });

    test('gives every canvas a text alternative and reaches every card by keyboard', async () => {
        const page = await openReport(browser, madeUp('keyboard', { components: 30 }).report);
        const silent = await page.locator('canvas:not([aria-label])').count();
        assert.equal(silent, 0);
        await page.locator('.card-link').first().focus();
        await page.keyboard.press('Tab');
        assert.equal(await page.evaluate(() => document.activeElement.textContent), 'IC 2');
        await page.keyboard.press('Enter');
        await page.locator('body[data-shown="ICA_01"]').waitFor();
        assert.equal(await page.locator('canvas:not([aria-label])').count(), 0);
        await page.close();
    });
});
