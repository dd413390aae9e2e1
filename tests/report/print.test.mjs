// The report on paper.
import assert from 'node:assert/strict';
import { before, describe, test } from 'node:test';
import { browserFor, missingBrowser, openReport, screenshot } from './browser.mjs';
import { boxes, inside, observeUntilPrinted, onPaper, overlap, PAPER } from './paper.mjs';
import { madeUp } from './runs.mjs';

describe('printing', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');

    test('right after opening waits until every card is drawn, by button and by key', async () => {
        const run = madeUp('at-once', { components: 40 });
        const ways = [
            (page) => page.getByRole('button', { name: 'Print' }).click(),
            (page) => page.keyboard.press('Control+p'),
        ];
        for (const start of ways) {
            const page = await browser.context.newPage();
            await page.addInitScript(() => {
                window.print = () => {
                    window.drawnCards = document.querySelectorAll('.card[data-drawn]').length;
                };
            });
            await page.goto(`file://${run.report}`);
            await page.locator('.card').first().waitFor();
            await start(page);
            await page.waitForFunction(() => window.drawnCards !== undefined);
            assert.equal(await page.evaluate(() => window.drawnCards), 40);
            await page.close();
        }
    });
});

for (const renderer of ['webgl2', 'canvas']) {
    describe(`on paper, with ${renderer}`, { skip: missingBrowser }, () => {
        const browser = browserFor(renderer);
        let run;
        before(() => {
            run = madeUp('paper', { components: 4 });
        });

        const open = async (at) => {
            const page = await openReport(browser, run.report, {
                at,
                first: `(${observeUntilPrinted})()`,
                viewport: { width: 1100, height: 900 },
            }); // charts take the full width, which is more than that of the paper
            if (at) await page.locator(`.planes[data-renderer=${renderer}]:not(.planes-waiting)`).waitFor();
            return page;
        };

        test('a component keeps every image in its panel and the panels apart', async () => {
            const page = await open('#/component/ICA_01');
            await onPaper(page);
            await screenshot(page, `component-paper-${renderer}`);
            const panels = await boxes(page, '.panel');
            const pictures = await boxes(page, '.panel canvas');
            assert.equal(panels.length, 4);
            assert.ok(pictures.length >= 4);
            for (const picture of pictures) assert.ok(inside(picture, picture.panel), JSON.stringify(picture));
            for (const panel of panels) {
                assert.ok(panel.left >= 0 && panel.right <= PAPER, JSON.stringify(panel));
                for (const other of panels)
                    assert.ok(panel === other || !overlap(panel, other), JSON.stringify([panel, other]));
            }
            await page.close();
        });

        test('a component takes one page, on A4 and on letter paper', async () => {
            const page = await open('#/component/ICA_01');
            for (const format of ['A4', 'Letter']) {
                const file = (await page.pdf({ format })).toString('latin1');
                assert.equal(file.match(/\/Type\s*\/Page\b/g).length, 1, format);
            }
            await page.close();
        });

        test('the eigenvalues fill their panel', async () => {
            const page = await open(undefined);
            await onPaper(page);
            const [{ left, right, panel }] = await boxes(page, '.chart-eigenvalues canvas');
            assert.ok(
                right - left > 0.85 * panel.width && right <= panel.right,
                `${left} to ${right} in ${JSON.stringify(panel)}`,
            );
            await page.close();
        });

        test('a component has its label and its complete note, and no controls', async () => {
            const page = await open('#/component/ICA_02');
            const note = 'a note as long as they are where two networks meet in one component, '.repeat(4).trim();
            await page.click('.label-unsure');
            await page.fill('#note', note);
            await onPaper(page);
            assert.deepEqual(await page.locator('.label-button:visible').allTextContents(), ['?Unsure']);
            assert.equal(
                await page.locator('.component-head input:visible, .component-head select:visible').count(),
                0,
            );
            assert.equal((await page.locator('.component-head').innerText()).includes(note), true);
            await page.close();
        });
    });
}
