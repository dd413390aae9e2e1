// One component: its map, its crosshair, its charts, compared with the files of the run.
import assert from 'node:assert/strict';
import { before, describe, test } from 'node:test';
import { browserFor, missingBrowser, openReport, painted, showComponent } from './browser.mjs';
import { COLUMNS } from './made_up_run.mjs';
import { cardNames, chartData, checkCrosshair, isFlipped } from './page_contents.mjs';
import { colouredPixels, readPng } from './png.mjs';
import { madeUp } from './runs.mjs';

for (const renderer of ['webgl2', 'canvas']) {
    describe(`with ${renderer} a component`, { skip: missingBrowser }, () => {
        const browser = browserFor(renderer);
        let six;
        let thirty;
        before(() => {
            six = madeUp('six', { components: 6 });
            thirty = madeUp('thirty', { components: 30 });
        });

        test('changes the pixels of the map with the threshold', async () => {
            const page = await openReport(browser, thirty.report);
            await showComponent(page, 'ICA_01', renderer);
            await page.locator('#fewest').fill('1');
            await page.addStyleTag({ content: '.brain-foot { visibility: hidden; }' }); // has colours of its own
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
            const page = await openReport(browser, six.report);
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
            const page = await openReport(browser, six.report);
            await showComponent(page, 'ICA_04', renderer);
            await page.keyboard.press('p');
            const peak = await checkCrosshair(page, six, 4);
            for (const key of ['ArrowUp', 'ArrowUp', 'ArrowUp', 'ArrowDown']) await page.keyboard.press(key);
            const above = await checkCrosshair(page, six, 4);
            assert.equal(above.voxel[2], peak.voxel[2] + 2); // up is up: axial slices, z stored upwards
            await page.keyboard.press('p');
            assert.deepEqual((await checkCrosshair(page, six, 4)).voxel, peak.voxel);
            await page.close();
        });

        test('puts the crosshair where the reader clicks, left on the left, in all planes', async () => {
            const page = await openReport(browser, six.report);
            await showComponent(page, 'ICA_05', renderer);
            const box = await page.locator('.planes:not(.planes-waiting)').first().boundingBox();
            // The planes are cropped to the mask with two voxels around it: 24 x 27 of the 26 x 30 voxels.
            const axial = { left: box.x, width: box.width * (24 / (2 * 24 + 27)), top: box.y, height: box.height };
            const click = async (across, up) => {
                await page.mouse.click(axial.left + across * axial.width, axial.top + (1 - up) * axial.height);
                return checkCrosshair(page, six, 5);
            };
            const left = await click(0.25, 0.5);
            const right = await click(0.75, 0.5);
            const front = await click(0.5, 0.7);
            assert.ok(left.mm[0] < -20 && right.mm[0] > 20, `${left.mm[0]} mm and ${right.mm[0]} mm`);
            assert.ok(front.mm[1] > left.mm[1] + 20, `${front.mm[1]} mm in front of ${left.mm[1]} mm`);
            await page.close();
        });

        test('steps through the components with the arrow keys in the order of the gallery', async () => {
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

        test('draws time course and fingerprint from the values of the tables', async () => {
            const page = await openReport(browser, thirty.report);
            for (const component of [0, 2, 29]) {
                const name = thirty.metrics[component].component;
                await showComponent(page, name, renderer);
                const flipped = await isFlipped(page);
                const course = await chartData(page, 'course');
                assert.deepEqual(
                    course.datasets[0].data.map(({ y }) => y),
                    thirty.mixing.map((row) => (flipped ? 1 - Number(row[name]) : Number(row[name]))),
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
    });
}
