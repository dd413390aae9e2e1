// The report on a phone.
import assert from 'node:assert/strict';
import { before, describe, test } from 'node:test';
import { browserFor, goTo, missingBrowser, openReport, painted, screenshot, showComponent } from './browser.mjs';
import { cutOff } from './cut_off.mjs';
import { madeUp } from './runs.mjs';

describe('in a narrow window', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');
    let run;
    before(() => {
        run = madeUp('narrow', { components: 6 });
    });

    for (const width of [400, 320]) {
        test(`of ${width} pixels nothing sticks out or is cut off`, async () => {
            const page = await openReport(browser, run.report, { viewport: { width, height: 800 } });
            await page.click('#add-filter');
            await page.selectOption('#sort', { label: 'Design matrix: predictor number' });
            await painted(page);
            assert.deepEqual(await cutOff(page), []);
            await screenshot(page, `gallery-${width}`);
            await showComponent(page, 'ICA_01', 'canvas');
            await page.locator('#threshold').fill('3');
            await page.locator('#ceiling').fill('12.5');
            await painted(page);
            assert.deepEqual(await cutOff(page), []);
            await screenshot(page, `component-${width}`);
            await page.selectOption('#compare', '3');
            await page.locator('.brain:nth-child(2) .colour-bar').waitFor();
            await painted(page);
            assert.deepEqual(await cutOff(page), []);
            await goTo(page, '#/methods');
            await page.locator('#methods-text').waitFor();
            assert.deepEqual(await cutOff(page), []);
            await page.close();
        });
    }
});
