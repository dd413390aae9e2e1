// The report as a reader meets it: opened from disk in a real browser, once with WebGL2 and once without, and held
// against the files of its run.
import assert from 'node:assert/strict';
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { before, describe, test } from 'node:test';
import { browserFor, measures, missingBrowser, openReport, painted, screenshot, showComponent } from './browser.mjs';
import { COLUMNS } from './made_up_run.mjs';
import { CHART, cardNames, chartData, checkCrosshair } from './page_contents.mjs';
import { colouredPixels, readPng } from './png.mjs';
import { analysed, madeUp } from './runs.mjs';

const NAMES = (count) => Array.from({ length: count }, (_, c) => `ICA_${String(c).padStart(2, '0')}`);

let thirty;
let one;
let twoHundred;
let real;

before(() => {
    if (missingBrowser) return;
    thirty = madeUp('thirty', { components: 30 });
    one = madeUp('one', { components: 1, design: false });
    twoHundred = madeUp('two-hundred', { components: 200, grid: 'medium' });
    real = analysed();
});

for (const renderer of ['webgl2', 'canvas']) {
    describe(`with ${renderer}`, { skip: missingBrowser }, () => {
        const browser = browserFor(renderer);

        test('opens from disk without a complaint and without a request', async () => {
            const page = await openReport(browser, real.report);
            await screenshot(page, `gallery-${renderer}`);
            await showComponent(page, 'ICA_03', renderer);
            await page.selectOption('#compare', '1');
            await page
                .locator(`.brain:nth-child(2) .planes[data-renderer="${renderer}"]:not(.planes-waiting)`)
                .waitFor();
            await screenshot(page, `compare-${renderer}`);
            await page.evaluate(() => {
                location.hash = '#/methods';
            });
            await page.locator('#methods-text').waitFor();
            await screenshot(page, `methods-${renderer}`);
            assert.deepEqual(page.complaints, []);
            assert.deepEqual(page.requests, [`file://${real.report}`]);
            await page.close();
        });

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

        test('sorts the cards by a parameter in both directions, those without a number last', async () => {
            const page = await openReport(browser, thirty.report);
            const numbered = thirty.metrics.filter((row) => row.kurtosis !== 'n/a');
            const rising = [...numbered].sort((a, b) => a.kurtosis - b.kurtosis).map((row) => row.component);
            await page.selectOption('#sort', { label: 'Kurtosis' });
            assert.deepEqual(await cardNames(page), [...rising, 'ICA_02']);
            await page.click('#direction');
            assert.deepEqual(await cardNames(page), [...rising.reverse(), 'ICA_02']);
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

        test('changes the pixels of the map with the threshold', async () => {
            const page = await openReport(browser, thirty.report);
            await showComponent(page, 'ICA_01', renderer);
            const coloured = async (threshold) => {
                await page.locator('#threshold').fill(String(threshold));
                await painted(page);
                return colouredPixels(readPng(await page.locator('.brain-place').first().screenshot()));
            };
            const [low, middle, high] = [await coloured(1), await coloured(2.5), await coloured(9)];
            assert.ok(low > 2 * middle && middle > 50, `${low}, ${middle} and ${high} coloured pixels`);
            assert.equal(high, 0); // the end of the slider, above all values of the map
            await page.close();
        });

        test('changes the pixels of the map with the opacity and the colours', async () => {
            const page = await openReport(browser, thirty.report);
            await showComponent(page, 'ICA_01', renderer);
            const picture = async () => {
                await painted(page);
                return page.locator('.brain-place').first().screenshot();
            };
            const before = await picture();
            await page.locator('#opacity').fill('0.3');
            const faint = await picture();
            await page.locator('#opacity').fill('0.9');
            await page.selectOption('#colour-map', 'cividis');
            const cividis = await picture();
            assert.ok(!before.equals(faint) && !before.equals(cividis) && !faint.equals(cividis));
            await page.close();
        });

        test('shows under the crosshair the value that the map file holds there', async () => {
            const page = await openReport(browser, thirty.report);
            await showComponent(page, 'ICA_04', renderer);
            const peak = await checkCrosshair(page, thirty, 4);
            for (const key of ['ArrowUp', 'ArrowUp', 'ArrowUp', 'ArrowDown']) await page.keyboard.press(key);
            const above = await checkCrosshair(page, thirty, 4);
            assert.equal(above.voxel[2], peak.voxel[2] + 2); // up is up: axial slices, z stored upwards
            await page.keyboard.press('p');
            assert.deepEqual((await checkCrosshair(page, thirty, 4)).voxel, peak.voxel);
            await page.close();
        });

        test('puts the crosshair where one clicks, left on the left, in all planes together', async () => {
            const page = await openReport(browser, thirty.report);
            await showComponent(page, 'ICA_05', renderer);
            const box = await page.locator('.planes:not(.planes-waiting)').first().boundingBox();
            const axial = { left: box.x, width: box.width * (26 / (2 * 26 + 30)), top: box.y, height: box.height };
            const click = async (across, up) => {
                await page.mouse.click(axial.left + across * axial.width, axial.top + (1 - up) * axial.height);
                return checkCrosshair(page, thirty, 5);
            };
            const left = await click(0.3, 0.5);
            const right = await click(0.7, 0.5);
            const front = await click(0.5, 0.7);
            assert.ok(left.mm[0] < -20 && right.mm[0] > 20, `${left.mm[0]} mm and ${right.mm[0]} mm`);
            assert.ok(front.mm[1] > left.mm[1] + 20, `${front.mm[1]} mm in front of ${left.mm[1]} mm`);
            await page.close();
        });

        test('goes through the components with the arrow keys in the order of the gallery', async () => {
            const page = await openReport(browser, thirty.report);
            await page.selectOption('#sort', { label: 'Skewness' });
            const order = await cardNames(page);
            await showComponent(page, order[0], renderer);
            for (const name of [order[1], order[2]]) {
                await page.keyboard.press('ArrowRight');
                await page.locator(`body[data-shown="${name}"]`).waitFor();
            }
            await page.keyboard.press('ArrowLeft');
            await page.locator(`body[data-shown="${order[1]}"]`).waitFor();
            assert.match(await page.locator('.component-name').textContent(), /2 of 30/);
            assert.deepEqual(page.complaints, []);
            await page.close();
        });

        test('draws time course and fingerprint with the values of the tables', async () => {
            const page = await openReport(browser, thirty.report);
            for (const component of [0, 2, 29]) {
                const name = NAMES(30)[component];
                await showComponent(page, name, renderer);
                const course = await chartData(page, 'course');
                assert.deepEqual(
                    course.datasets[0].data.map(({ y }) => y),
                    thirty.mixing.map((row) => Number(row[name])),
                );
                assert.deepEqual(
                    course.datasets[0].data.map(({ x }) => x),
                    thirty.mixing.map((_, t) => 2 * t),
                );
                assert.match(course.datasets[1].label, new RegExp(`^${thirty.metrics[component].dm_pred_name}`));
                const radar = await chartData(page, 'fingerprint');
                const wanted = COLUMNS.slice(5).map((column) => thirty.metrics[component][column]);
                assert.deepEqual(
                    radar.datasets[0].data,
                    wanted.map((cell) => (cell === 'n/a' ? null : Number(cell))),
                );
                const cells = await page
                    .locator('td[data-metric]')
                    .evaluateAll((all) => Object.fromEntries(all.map((cell) => [cell.dataset.metric, cell.title])));
                for (const column of COLUMNS.slice(5))
                    assert.equal(cells[column], thirty.metrics[component][column], column);
            }
            await page.close();
        });

        test('keeps labels and notes, gives them as a table and reads them back', async () => {
            const page = await openReport(browser, thirty.report);
            await showComponent(page, 'ICA_06', renderer);
            await page.keyboard.press('s');
            await page.fill('#note', 'visual\tcortex');
            await page.locator('h2').first().click();
            await showComponent(page, 'ICA_07', renderer);
            await page.click('.label-noise');
            await page.reload();
            await page.locator('body[data-shown="ICA_07"]').waitFor();
            assert.equal(await page.locator('.label-noise').getAttribute('aria-pressed'), 'true');

            await page.click('a[href="#/"] >> nth=0');
            const [download] = await Promise.all([
                page.waitForEvent('download'),
                page.click('[data-action="export-labels"]'),
            ]);
            assert.equal(download.suggestedFilename(), 'sub-made_task-up_desc-ICA_labels.tsv');
            const lines = readFileSync(await download.path(), 'utf8').split('\n');
            assert.equal(lines[0], 'component\tclassification\tnote');
            assert.deepEqual(
                lines.slice(1, -1).map((line) => line.split('\t')[0]),
                thirty.metrics.map((row) => row.component),
            );
            assert.equal(lines[7], 'ICA_06\tsignal\tvisual cortex');
            assert.equal(lines[8], 'ICA_07\tnoise\tn/a');
            assert.equal(lines[9], 'ICA_08\tn/a\tn/a');

            const changed = join(thirty.folder, 'labels.tsv');
            writeFileSync(
                changed,
                lines.join('\n').replace('ICA_08\tn/a', 'ICA_08\tunsure').replace('ICA_06\tsignal', 'ICA_06\tnoise'),
            );
            await page.setInputFiles('.label-bar input[type="file"]', changed);
            await page
                .locator('.label-message', { hasText: '30 components read from labels.tsv, 2 changed.' })
                .waitFor();
            assert.equal(await page.locator('.card[data-component="ICA_08"] .card-label').textContent(), '? Unsure');
            assert.equal(
                await page.locator('.card[data-component="ICA_06"] .card-label').textContent(),
                '\u2715 Noise',
            );

            writeFileSync(changed, 'component\tclassification\nICA_99\tsignal\n');
            await page.setInputFiles('.label-bar input[type="file"]', changed);
            await page.locator('.label-message', { hasText: 'no component "ICA_99"' }).waitFor();
            await page.evaluate(() => localStorage.clear());
            await page.close();
        });

        test('says how long it takes', async (t) => {
            for (const [name, run] of [
                ['sample', real],
                ['200 components', twoHundred],
            ]) {
                const page = await openReport(browser, run.report);
                await page.waitForFunction(() => performance.getEntriesByName('first view').length > 0);
                const [first] = await measures(page, 'first view');
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
    const browser = browserFor('webgl2');

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
            'nothing sticks out sideways',
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

    test('gives every picture a text and reaches every card by keyboard', async () => {
        const page = await openReport(browser, thirty.report);
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

    test('shades the five bands at the limits of the plug-in', async () => {
        const page = await openReport(browser, thirty.report);
        await showComponent(page, 'ICA_00', 'webgl2');
        // Nyquist 0.25 Hz: limits 0.008, 0.02, 0.05 and 0.1 Hz
        const { left, right, ground } = await page.locator(CHART('spectrum')).evaluate((canvas) => {
            const {
                scales: { x },
                chartArea: { top },
            } = canvas.chart;
            const ratio = canvas.width / canvas.clientWidth;
            const shade = (hz) =>
                [
                    ...canvas
                        .getContext('2d')
                        .getImageData(Math.round(x.getPixelForValue(hz) * ratio), Math.round((top + 2) * ratio), 1, 1)
                        .data,
                ].join();
            return {
                left: [0.004, 0.014, 0.035, 0.075, 0.175].map(shade),
                right: x.max,
                ground: [0.0062, 0.0098, 0.018, 0.022, 0.048, 0.052, 0.098, 0.102].map(shade),
            };
        });
        assert.equal(right, 0.25);
        const [even, odd] = [left[0], left[1]];
        assert.notEqual(even, odd);
        assert.deepEqual(ground, [even, odd, odd, even, even, odd, odd, even]);
        await page.close();
    });

    test('draws the cards of the overview as large after other views as without', async () => {
        const page = await openReport(browser, thirty.report, { at: '#/component/ICA_04' });
        const away = () => page.waitForTimeout(1500); // in which the cards would be drawn if they were in the page
        const allDrawn = async () => {
            await page.evaluate(() => {
                location.hash = '#/';
            });
            await page.waitForFunction(
                () => {
                    const pictures = [...document.querySelectorAll('.card[data-drawn] canvas')];
                    return pictures.length === 90 && pictures.every(({ width }) => width > 30);
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

    test('shows the stability over the repeats and sorts by it, where there were any', async () => {
        const page = await openReport(browser, real.report);
        await page.selectOption('#sort', { label: 'Stability over repeats (Iq)' });
        const rising = [...real.metrics].sort((a, b) => a.stability_iq - b.stability_iq).map((row) => row.component);
        assert.deepEqual(await cardNames(page), rising);
        await showComponent(page, 'ICA_00', 'webgl2');
        const text = await page.locator('td[data-metric=stability_iq]').textContent();
        const [, index, runs, all] = /^Iq ([0-9.]+), in (\d) of (\d) runs$/.exec(text);
        assert.ok(Math.abs(index - real.metrics[0].stability_iq) < 5e-4, text);
        assert.deepEqual([runs, all], [real.metrics[0].stability_runs, '3']);
        await page.close();

        const once = await openReport(browser, thirty.report);
        assert.equal(await once.locator('#sort option[value=stability]').count(), 0);
        await showComponent(once, 'ICA_00', 'webgl2');
        assert.equal(await once.locator('td[data-metric=stability_iq]').count(), 0);
        await once.close();
    });

    test('says in plain words what limits a run', async () => {
        const limited = madeUp('limited', { components: 3, asked: 5, trMilliseconds: 2500, design: false });
        const page = await openReport(browser, limited.report);
        const warnings = (await page.locator('.warnings li').allTextContents()).join('\n');
        assert.match(warnings, /stopped early: 3 of 5/);
        assert.match(warnings, /2\.5 s as 2 s/);
        assert.match(warnings, /n\/a\) for Kurtosis/);
        await showComponent(page, 'ICA_00', 'webgl2');
        const axes = await page
            .locator(CHART('spectrum'))
            .evaluate((canvas) => [canvas.chart.scales.x.max, canvas.chart.scales.top.max]);
        assert.deepEqual(axes, [0.25, 0.2]); // the plug-in's clock below, the true one above
        assert.equal((await chartData(page, 'course')).datasets.length, 1); // no predictor to show
        assert.match(await page.locator('.matches').textContent(), /none/);
        await page.close();
    });

    test('has a methods paragraph with the numbers of the run', async () => {
        const page = await openReport(browser, thirty.report);
        await page.evaluate(() => {
            location.hash = '#/methods';
        });
        const text = await page.locator('#methods-text').textContent();
        for (const part of [
            '120 volumes',
            'TR 2 s',
            '30 largest',
            '87.3 % of the variance',
            '30 of 30 components',
            'convergence limit of 0.0001',
            '500 iterations',
            '2 predictors',
        ]) {
            assert.ok(text.includes(part), `${part} in: ${text}`);
        }
        await page.close();
    });

    test('stays under 15 MB for 30 components of a whole brain at 2 mm', async (t) => {
        const brain = madeUp('brain', { components: 30, grid: 'brain' }); // plain noise: the worst that can be packed
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
            `whole brain: ${(bytes / 1e6).toFixed(2)} MB, first view ${first} ms, component changes ${changes.join(', ')} ms`,
        );
        assert.ok(bytes < 15e6, `${bytes} bytes`);
        await page.close();
    });
});
