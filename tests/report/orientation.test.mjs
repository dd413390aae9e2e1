// An image that does not say where left and right are.
import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { browserFor, missingBrowser, openReport, painted, showComponent } from './browser.mjs';
import { readPng } from './png.mjs';
import { madeUp } from './runs.mjs';

/** In the page: number of letters drawn on canvases, by the text itself. */
function recordTexts() {
    window.drawnTexts = [];
    const draw = CanvasRenderingContext2D.prototype.fillText;
    CanvasRenderingContext2D.prototype.fillText = function (text, ...rest) {
        if (text !== '' && !this.canvas.chart) window.drawnTexts.push(text);
        draw.call(this, text, ...rest);
    };
}

const sidesOn = (page) =>
    page.evaluate(() => window.drawnTexts.filter((text) => ['L', 'R', 'A', 'P', 'S', 'I'].includes(text)));

describe('without orientation the page', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');

    test('names no sides and no positions in millimetres', async () => {
        const run = madeUp('unoriented', { components: 3, oriented: false });
        const page = await openReport(browser, run.report, { first: `(${recordTexts})()` });
        assert.doesNotMatch(await page.locator('.gallery-legend').textContent(), /left|right|axial|bottom/i);
        assert.equal(await page.getByText('Radiological view').first().isVisible(), false);
        await showComponent(page, 'ICA_01', 'canvas');
        await painted(page);
        assert.equal(await page.locator('[data-readout=mm]').count(), 0);
        assert.match(await page.locator('[data-readout=voxel]').textContent(), /^\d+, \d+, \d+$/);
        assert.equal(await page.locator('.brain-panel .switch-radiological').count(), 0);
        const labels = await page
            .locator('.plane')
            .evaluateAll((planes) => planes.map((plane) => plane.getAttribute('aria-label')));
        assert.deepEqual(labels, ['plane 1 of 3', 'plane 2 of 3', 'plane 3 of 3']);
        assert.deepEqual(await sidesOn(page), []);
        assert.deepEqual(page.complaints, []);
        await page.close();
    });

    test('differs from that of an image with one', async () => {
        const run = madeUp('oriented', { components: 3 });
        const page = await openReport(browser, run.report, { first: `(${recordTexts})()` });
        await showComponent(page, 'ICA_01', 'canvas');
        await painted(page);
        assert.ok(new Set(await sidesOn(page)).size === 6); // all six letters are drawn
        assert.equal(await page.locator('[data-readout=mm]').count(), 1);
        await page.close();
    });
});

describe('without orientation and with webgl2 the page', { skip: missingBrowser }, () => {
    const browser = browserFor('webgl2');

    test('marks no sides either', async () => {
        // Letters are light grey with a touch of blue; with an opacity of 0 nothing else is blue.
        const letterPixels = async (oriented) => {
            const run = madeUp(`webgl-${oriented}`, { components: 2, grid: 'medium', oriented });
            const page = await openReport(browser, run.report);
            await showComponent(page, 'ICA_00', 'webgl2');
            await page.locator('#opacity').fill('0');
            await page.addStyleTag({ content: '.brain-foot { visibility: hidden; }' });
            await painted(page);
            const image = readPng(await page.locator('.brain-place').first().screenshot());
            assert.deepEqual(page.complaints, []);
            await page.close();
            let count = 0;
            for (let y = 0; y < image.height; ++y) {
                for (let x = 0; x < image.width; ++x) {
                    const [red, green, blue] = image.at(x, y);
                    if (red > 150 && green > 150 && blue - red > 6) ++count;
                }
            }
            return count;
        };
        assert.ok((await letterPixels(true)) > 50);
        assert.equal(await letterPixels(false), 0);
    });
});
