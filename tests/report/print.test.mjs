// The report on paper.
import assert from 'node:assert/strict';
import { before, describe, test } from 'node:test';
import { browserFor, missingBrowser, openReport, screenshot, stay, watchedPage } from './browser.mjs';
import { boxes, inside, observeUntilPrinted, onPaper, overlap, PAPER } from './paper.mjs';
import { groupStudy, madeUp } from './runs.mjs';

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
            await stay(page);
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

describe('a group analysis on paper', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');
    let study;
    before(() => {
        study = groupStudy();
    });

    const open = async (at) => {
        const page = await watchedPage(browser, {
            first: `(${observeUntilPrinted})()`,
            viewport: { width: 1100, height: 900 },
        });
        await page.goto(`file://${study.report}${at}`);
        await page.locator('body[data-shown]').waitFor();
        return page;
    };
    const colours = (page, selector) =>
        page.locator(selector).evaluateAll((all) => all.map((element) => getComputedStyle(element).printColorAdjust));

    test('a component in a run is named, and its numbers leave the maps free', async () => {
        const page = await open(`#/component/ICA_01/${study.names[1]}`);
        await page.locator('.brain:nth-child(2) .colour-bar').waitFor();
        await onPaper(page);
        await screenshot(page, 'group-run-paper');
        assert.ok((await page.locator('main').innerText()).includes(`IC 2 in ${study.names[1]}`));
        const numbers = await boxes(page, '.brain-foot');
        const planes = await boxes(page, '.planes canvas');
        assert.equal(numbers.length, 2);
        assert.ok(planes.length >= 2);
        for (const plane of planes) {
            assert.ok(inside(plane, plane.panel), JSON.stringify(plane));
            for (const foot of numbers) assert.ok(!overlap(foot, plane), JSON.stringify([foot, plane]));
        }
        const file = (await page.pdf({ format: 'A4' })).toString('latin1');
        assert.equal(file.match(/\/Type\s*\/Page\b/g).length, 1);
        await page.close();
    });

    test('the dots of the amplitudes are printed, the switch is not', async () => {
        const page = await open('#/amplitudes');
        await onPaper(page);
        await screenshot(page, 'group-amplitudes-paper');
        assert.deepEqual(new Set(await colours(page, '.dot, .dot-median')), new Set(['exact']));
        assert.equal(await page.locator('.switch:visible').count(), 0);
        await page.close();
    });

    test('the correlations keep their colours and the width of the paper with many components', async () => {
        const page = await open('#/correlations');
        await page.evaluate(() => {
            const table = document.querySelector('.matrix');
            table.style.setProperty('--columns', 24);
            for (const row of table.rows) while (row.cells.length < 25) row.append(row.cells[1].cloneNode(true));
        });
        await onPaper(page);
        await screenshot(page, 'group-correlations-paper');
        assert.deepEqual(new Set(await colours(page, '.matrix td')), new Set(['exact']));
        const [table] = await boxes(page, '.matrix');
        assert.ok(inside(table, table.panel), JSON.stringify(table));
        assert.equal(await page.locator('.matrix-readout:visible').count(), 0);
        await page.close();
    });
});
