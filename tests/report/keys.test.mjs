// The report by keyboard alone: labels as fast as fingers type, undo, help, a tour of all views.
import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { browserFor, missingBrowser, openReport, painted, STAY } from './browser.mjs';
import { madeUp } from './runs.mjs';

const FAST = { delay: 30 }; // ms between keys
const LABELS = { s: 'signal', n: 'noise', u: 'unsure' };

/** Labels in the browser's storage, by component. */
const stored = (page) =>
    page.evaluate(() => {
        const key = `znica-report-labels-${document.getElementById('app').dataset.run}`;
        return Object.fromEntries(
            Object.entries(JSON.parse(localStorage[key])).map(([name, { label }]) => [name, label]),
        );
    });
const wantedFor = (keys) =>
    Object.fromEntries([...keys].map((key, c) => [`ICA_${String(c).padStart(2, '0')}`, LABELS[key]]));
const KEYS = 'snusnnussunsnuunsnsnuusnsnusnu';

for (const renderer of ['webgl2', 'canvas']) {
    describe(`by keyboard, with ${renderer}`, { skip: missingBrowser }, () => {
        const browser = browserFor(renderer);
        let made = 0;

        // A run of its own for every test, so that none sees the labels of another. In the order of extraction.
        const open = (settings) => {
            const volumes = 90 + ++made;
            const run = madeUp(`keys-${renderer}-${made}`, { components: 30, measures: false, volumes });
            return openReport(browser, run.report, settings);
        };

        test('30 labels at 30 ms label 30 components', async () => {
            const page = await open({ at: '#/component/ICA_00', first: STAY.replace('off', 'on') });
            for (const key of KEYS) await page.keyboard.press(key, FAST);
            assert.deepEqual(await stored(page), wantedFor(KEYS));
            assert.equal(await page.locator('.component-head .label-progress').textContent(), '30 of 30 labelled');
            await page.close();
        });

        test('30 pairs of a label and an arrow at 30 ms label 30 components, and the view follows', async () => {
            const page = await open({ at: '#/component/ICA_00', first: STAY });
            for (const key of KEYS) {
                await page.keyboard.press(key, FAST);
                await page.keyboard.press('ArrowRight', FAST);
            }
            assert.deepEqual(await stored(page), wantedFor(KEYS));
            await page.locator('body[data-shown=ICA_00]').waitFor(); // once around
            assert.equal(await page.locator('h2').textContent(), 'IC 1');
            await page.waitForFunction(() => location.hash.endsWith('ICA_00'));
            assert.deepEqual(page.complaints, []);
            await page.close();
        });

        test('the same key twice does not remove a label, and Z takes labels back one by one', async () => {
            const page = await open({ at: '#/component/ICA_04', first: STAY });
            await page.keyboard.press('s');
            await page.keyboard.press('s');
            await page.keyboard.press('n');
            assert.deepEqual(await stored(page), { ICA_04: 'noise' });
            await page.keyboard.press('ArrowRight');
            await page.keyboard.press('z');
            assert.deepEqual(await stored(page), { ICA_04: 'signal' });
            await page.locator('body[data-shown=ICA_04]').waitFor(); // where the label was
            await page.keyboard.press('z');
            await page.keyboard.press('z'); // nothing is left to take back
            assert.deepEqual(await stored(page), { ICA_04: null });
            await page.close();
        });

        test('labels go to the card that has the focus', async () => {
            const page = await open({ first: STAY.replace('off', 'on') });
            await page.locator('.card-link').nth(2).focus();
            for (const key of 'su') await page.keyboard.press(key, FAST);
            assert.deepEqual(await stored(page), { ICA_02: 'signal', ICA_03: 'unsure' });
            assert.equal(await page.evaluate(() => document.activeElement.textContent), 'IC 5');
            await page.keyboard.press('z');
            assert.deepEqual(await stored(page), { ICA_02: 'signal', ICA_03: null });
            assert.equal(await page.locator('.label-bar .label-progress').textContent(), '1 of 30 labelled');
            await page.close();
        });

        test('the crosshair is hidden and shown with X', async () => {
            const page = await open({ at: '#/component/ICA_01', first: STAY });
            await page.locator(`.brain .planes[data-renderer=${renderer}]:not(.planes-waiting)`).waitFor();
            const picture = async () => {
                await painted(page);
                return page.locator('.brain-place').first().screenshot();
            };
            const shown = await picture();
            await page.keyboard.press('x');
            const hidden = await picture();
            await page.keyboard.press('x');
            assert.ok(!shown.equals(hidden));
            assert.ok(shown.equals(await picture()));
            await page.close();
        });
    });
}

describe('a tour by keyboard', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');

    test('reaches every view, control and component', async () => {
        const page = await openReport(browser, madeUp('tour', { components: 4 }).report, { first: STAY });
        const focusOn = async (wanted) => {
            for (let i = 0; i < 60; ++i) {
                await page.keyboard.press('Tab');
                if (await page.evaluate((selector) => document.activeElement.matches(selector), wanted)) return;
            }
            assert.fail(`${wanted} is not reached with Tab`);
        };
        await focusOn('#sort');
        await focusOn('.card-link');
        await page.keyboard.press('Tab');
        const name = await page.evaluate(() => document.activeElement.closest('.card').dataset.component);
        await page.keyboard.press('Enter');
        await page.locator(`body[data-shown=${name}]`).waitFor();
        await focusOn('.label-button');
        await focusOn('[data-action=flip]');
        await focusOn('#threshold');
        await focusOn('#fewest');
        await page.keyboard.press('?');
        assert.match(await page.locator('dialog[open]').textContent(), /take back the last label/);
        await page.keyboard.press('s'); // is not for the view behind
        await page.keyboard.press('Escape');
        await page.locator('dialog[open]').waitFor({ state: 'detached' });
        assert.equal(await page.locator('.label-button[aria-pressed=true]').count(), 0);
        await page.keyboard.press('Escape');
        await page.locator('.cards').waitFor();
        assert.equal(await page.evaluate(() => document.activeElement.closest('.card').dataset.component), name);
        await focusOn('a[href="#/methods"]');
        await page.keyboard.press('Enter');
        await page.locator('#methods-text').waitFor();
        assert.deepEqual(page.complaints, []);
        await page.close();
    });
});
