// How maps are drawn: colours, sides of the body, and what the mouse may do.
import assert from 'node:assert/strict';
import { before, describe, test } from 'node:test';
import { browserFor, goTo, missingBrowser, openReport, painted, showComponent } from './browser.mjs';
import { checkCrosshair } from './page_contents.mjs';
import { contrast, readPng } from './png.mjs';
import { madeUp } from './runs.mjs';

const card = (page) => page.locator('.card[data-component=ICA_00] .card-mosaic');
const picture = (page) => card(page).evaluate((canvas) => canvas.toDataURL());
const sides = (page) => page.getByLabel('Radiological view').filter({ visible: true });

for (const renderer of ['webgl2', 'canvas']) {
    describe(`maps with ${renderer}`, { skip: missingBrowser }, () => {
        const browser = browserFor(renderer);
        let run;
        before(() => {
            run = madeUp('maps', { components: 6 });
        });

        test('share one colour scale while two are compared', async () => {
            const page = await openReport(browser, run.report);
            const bars = () =>
                page.locator('.brain:visible .colour-bar').evaluateAll((all) => all.map((bar) => bar.textContent));
            const alone = [];
            for (const name of ['ICA_00', 'ICA_01', 'ICA_02', 'ICA_03', 'ICA_04', 'ICA_05']) {
                await showComponent(page, name, renderer);
                alone.push((await bars())[0]);
            }
            const end = (bar) => Number(/[\d.]+$/.exec(bar)[0].slice(-3));
            const largest = alone.reduce((best, bar, i) => (end(bar) > end(alone[best]) ? i : best), 0);
            const smallest = alone.reduce((best, bar, i) => (end(bar) < end(alone[best]) ? i : best), 0);
            assert.notEqual(alone[largest], alone[smallest]);
            await showComponent(page, `ICA_0${smallest}`, renderer);
            await page.selectOption('#compare', String(largest));
            await page.locator('.brain:nth-child(2) .colour-bar').waitFor();
            assert.deepEqual(await bars(), [alone[largest], alone[largest]]);
            await page.selectOption('#compare', '');
            await page.locator('.brain:nth-child(2)').waitFor({ state: 'hidden' });
            assert.deepEqual(await bars(), [alone[smallest]]);
            await page.close();
        });

        test('respond only to the left button', async () => {
            const page = await openReport(browser, run.report);
            await showComponent(page, 'ICA_01', renderer);
            const dialogs = [];
            page.on('dialog', async (dialog) => {
                dialogs.push(dialog.message());
                await dialog.dismiss();
            });
            const place = page.locator('.brain-place').first();
            const box = await page.locator('.planes:not(.planes-waiting)').first().boundingBox();
            const at = [box.x + box.width * 0.15, box.y + box.height * 0.5];
            await page.mouse.click(...at);
            await painted(page);
            const before = await place.screenshot();
            const { voxel } = await checkCrosshair(page, run, 1);
            const drag = async (button) => {
                await page.mouse.move(...at);
                await page.mouse.down({ button });
                await page.mouse.move(at[0] + 30, at[1] - 40, { steps: 4 });
                await page.mouse.up({ button });
                await page.mouse.move(...at);
            };
            await drag('right');
            await drag('middle');
            await page.keyboard.down('Shift');
            await drag('left');
            await page.keyboard.up('Shift');
            for (const key of ['h', 'j', 'k', 'l', 'm', 'v', 'c']) await page.keyboard.press(key);
            await page.mouse.dblclick(...at);
            await painted(page);
            assert.deepEqual((await checkCrosshair(page, run, 1)).voxel, voxel);
            assert.ok(before.equals(await place.screenshot()), 'the picture is the same');
            assert.deepEqual(dialogs, []);
            await page.close();
        });

        test('are drawn voxel by voxel when smoothing is off, including the mean image', async () => {
            const page = await openReport(browser, run.report);
            await showComponent(page, 'ICA_01', renderer);
            await page.locator('#opacity').fill('0'); // only the mean image
            await painted(page);
            const place = page.locator('.brain-place').first();
            const smooth = await place.screenshot();
            await page.getByLabel('Interpolate').uncheck();
            await painted(page);
            assert.ok(!smooth.equals(await place.screenshot()));
            await page.close();
        });

        test('have strong ends that stand out from the brightest tissue in lightness and hue', async () => {
            const page = await openReport(browser, run.report);
            await showComponent(page, 'ICA_01', renderer);
            const ends = await page.locator('.colour-strip').evaluateAll((strips) =>
                strips.map((strip, i) => {
                    const stops = getComputedStyle(strip).backgroundImage.match(/rgb\(\d+, \d+, \d+\)/g);
                    return stops
                        .at(i === 0 ? 0 : -1)
                        .match(/\d+/g)
                        .map(Number); // blue ends at the left, orange at the right
                }),
            );
            await page.locator('#opacity').fill('0'); // only the mean image
            await painted(page);
            const image = readPng(await page.locator('.brain-place').first().screenshot());
            let grey = 0;
            for (let y = 0; y < image.height; ++y) {
                for (let x = 0; x < image.width; ++x) {
                    const [r, g, b] = image.at(x, y);
                    if (r === g && g === b) grey = Math.max(grey, r);
                }
            }
            const widths = await page
                .locator('.colour-strip')
                .evaluateAll((strips) => strips.map((strip) => strip.offsetWidth));
            assert.deepEqual(widths, [92, 92]); // full width, where there is room
            const [blue, orange] = ends;
            assert.ok(blue[2] - blue[0] > 30 && orange[0] - orange[2] > 30, `${blue} and ${orange}`);
            assert.ok(grey > 100, `${grey}`); // tissue is visible
            for (const end of ends) {
                const ratio = contrast(end, [grey, grey, grey]);
                assert.ok(ratio > 1.6, `${ratio} of ${end} over ${grey}`);
            }
            await page.close();
        });
    });
}

describe('mosaics of the gallery', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');
    let run;
    before(() => {
        run = madeUp('mosaics', { components: 6 });
    });

    test('mark left and right on the first slice', async () => {
        const page = await openReport(browser, run.report);
        // Letters are light grey with a touch of blue, unlike tissue.
        const letters = await card(page).evaluate((canvas) => {
            const [first, second] = JSON.parse(canvas.dataset.slices);
            const count = ({ x, y, width, height }, from) => {
                const { data } = canvas
                    .getContext('2d')
                    .getImageData(
                        ...[x + from * width, y + height / 3, width * 0.15, height / 3].map((part) =>
                            Math.round(part * canvas.width),
                        ),
                    );
                return data.filter((red, i) => i % 4 === 0 && red > 200 && data[i + 2] - red > 4).length;
            };
            return [count(first, 0), count(first, 0.85), count(second, 0), count(second, 0.85)];
        });
        assert.ok(letters[0] > 5 && letters[1] > 5, `letters: ${letters}`);
        assert.deepEqual(letters.slice(2), [0, 0]); // none on the second slice
        await page.close();
    });

    test('state the threshold and follow the radiological switch', async () => {
        const page = await openReport(browser, run.report);
        const legend = page.locator('.gallery-legend');
        assert.match(await legend.textContent(), /\|z\| > 2\.5.*left is on the left\.$/);
        const left = await picture(page);
        await sides(page).check();
        await page.waitForFunction(
            (before) => document.querySelector('.card[data-component=ICA_00] .card-mosaic').toDataURL() !== before,
            left,
        );
        assert.match(await legend.textContent(), /left is on the right\.$/);
        await showComponent(page, 'ICA_02', 'canvas');
        assert.equal(await sides(page).isChecked(), true);
        await sides(page).uncheck();
        await goTo(page, '#/');
        await page.waitForFunction(
            (before) => document.querySelector('.card[data-component=ICA_00] .card-mosaic').toDataURL() === before,
            left,
        );
        assert.match(await legend.textContent(), /left is on the left\.$/);
        await page.close();
    });

    test('are shown above legible predictor names', async () => {
        const page = await openReport(browser, run.report);
        const colours = await page
            .locator('.card-predictor')
            .first()
            .evaluate((element) => [
                getComputedStyle(element).color,
                getComputedStyle(element.closest('.card')).backgroundColor,
            ]);
        const [text, ground] = colours.map((colour) => colour.match(/\d+/g).map(Number));
        assert.ok(contrast(text, ground) >= 4.5, `${colours}`); // level AA for small text
        await page.close();
    });
});
