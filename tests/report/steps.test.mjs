// Stepping from component to component.
import assert from 'node:assert/strict';
import { before, describe, test } from 'node:test';
import { browserFor, goTo, missingBrowser, openReport, painted, STAY } from './browser.mjs';
import { checkCrosshair } from './page_contents.mjs';
import { madeUp } from './runs.mjs';

/** In the page: holds back one block of the file until `window.release()`. */
function holdBack(held) {
    let given;
    const released = new Promise((resolve) => {
        window.release = resolve;
    });
    Object.defineProperty(window, 'znBlocks', {
        get: () => given,
        set: (blocks) => {
            given = {
                ...blocks,
                bytes: async (name) => {
                    if (name === held) await released;
                    return blocks.bytes(name);
                },
            };
        },
    });
}

describe('stepping through the components', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');
    let run;
    before(() => {
        run = madeUp('steps', { components: 6 });
    });

    const release = async (page) => {
        await page.evaluate(() => window.release());
        for (let i = 0; i < 5; ++i) await painted(page);
    };

    test('keeps the map of the component shown when that of a skipped one is unpacked later', async () => {
        const page = await openReport(browser, run.report, {
            at: '#/component/ICA_00',
            first: `(${holdBack})('map-1')`,
        });
        const { voxel } = await checkCrosshair(page, run, 0);
        await page.keyboard.press('ArrowRight');
        await page.locator('h2', { hasText: /^IC 2$/ }).waitFor();
        await page.keyboard.press('ArrowLeft');
        await page.locator('h2', { hasText: /^IC 1$/ }).waitFor();
        await release(page);
        assert.deepEqual((await checkCrosshair(page, run, 0)).voxel, voxel);
        assert.equal(await page.evaluate(() => document.body.dataset.shown), 'ICA_00');
        await page.close();
    });

    test('keeps the map of the component that was last chosen for comparison', async () => {
        const page = await openReport(browser, run.report, {
            at: '#/component/ICA_00',
            first: `(${holdBack})('map-1')`,
        });
        await page.selectOption('#compare', '1');
        await page.selectOption('#compare', '2');
        const second = page.locator('.brain:nth-child(2)');
        await second.locator('.brain-title', { hasText: /^IC 3$/ }).waitFor();
        const value = () => second.locator('[data-readout=value]').textContent();
        const before = await value();
        await release(page);
        assert.equal(await second.locator('.brain-title').textContent(), 'IC 3');
        assert.equal(await value(), before);
        await page.close();
    });

    test('continues from the former position of a component that a label removed from the selection', async () => {
        const page = await openReport(browser, run.report, { first: STAY });
        await page.selectOption('#label-filter', 'none');
        await page.locator('.card-link', { hasText: 'IC 3' }).click();
        await page.locator('body[data-shown=ICA_02]').waitFor();
        await page.keyboard.press('n');
        await page.keyboard.press('ArrowRight');
        await page.locator('body[data-shown=ICA_03]').waitFor();
        await page.keyboard.press('n');
        await page.keyboard.press('ArrowLeft');
        await page.locator('body[data-shown=ICA_01]').waitFor();
        await page.evaluate(() => localStorage.clear());
        await page.close();
    });

    test('sets labels while the threshold has the focus, and leaves the arrow keys to it', async () => {
        const page = await openReport(browser, run.report, { at: '#/component/ICA_02', first: STAY });
        await page.locator('#threshold').focus();
        await page.keyboard.press('ArrowRight');
        assert.equal(await page.inputValue('#threshold'), '2.6');
        await page.keyboard.press('u');
        assert.deepEqual(await page.locator('.label-button[aria-pressed=true]').allTextContents(), ['?Unsure']);
        assert.equal(await page.locator('h2').textContent(), 'IC 3');
        await page.close();
    });

    test('never compares a component with itself', async () => {
        const page = await openReport(browser, run.report, { at: '#/component/ICA_00' });
        const brains = page.locator('.brain:visible');
        await page.selectOption('#compare', '1');
        await page.locator('.brain:nth-child(2) .colour-bar').waitFor();
        assert.deepEqual(await page.locator('#compare option:disabled').allTextContents(), ['Compare with IC 1']);
        await page.keyboard.press('ArrowRight');
        await page.locator('body[data-shown=ICA_01]').waitFor();
        assert.equal(await brains.count(), 1);
        await page.locator('h2').click(); // takes the focus from the choice
        await page.keyboard.press('ArrowRight');
        await page.locator('body[data-shown=ICA_02]').waitFor();
        assert.deepEqual(await page.locator('.brain-title:visible').allTextContents(), ['IC 3', 'IC 2']);
        await page.close();
    });

    test('keeps the keyboard focus where the reader is, to a component and back', async () => {
        const page = await openReport(browser, run.report);
        await page.locator('.card-link', { hasText: 'IC 4' }).focus();
        await page.keyboard.press('Enter');
        await page.locator('body[data-shown=ICA_03]').waitFor();
        const focused = () => page.evaluate(() => document.activeElement.textContent);
        assert.equal(await focused(), 'IC 4');
        assert.equal(await page.evaluate(() => document.activeElement.tagName), 'H2');
        await page.goBack();
        await page.locator('.cards').waitFor();
        assert.equal(await focused(), 'IC 4');
        await page.close();
    });

    test('goes to the overview, and marks it, for a component that the run does not have', async () => {
        const page = await openReport(browser, run.report);
        await goTo(page, '#/component/ICA_99');
        await page.waitForFunction(() => location.hash.endsWith('ICA_99'));
        await painted(page);
        assert.equal(await page.locator('.cards').isVisible(), true);
        assert.deepEqual(await page.locator('.tab[aria-current]').allTextContents(), ['Overview']);
        await page.close();
    });
});
