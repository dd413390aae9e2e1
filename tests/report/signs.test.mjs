// The sign that a component is shown with: its longer tail positive, until the reader flips it.
import assert from 'node:assert/strict';
import { before, describe, test } from 'node:test';
import { browserFor, goTo, missingBrowser, openReport, painted, showComponent } from './browser.mjs';
import { chartData, checkCrosshair, isFlipped, numberOf } from './page_contents.mjs';
import { readPng } from './png.mjs';
import { madeUp } from './runs.mjs';

const CENTRE = [13, 15, 12];
const ball = (height) => [{ centre: CENTRE, radius: 5, height }];

for (const renderer of ['webgl2', 'canvas']) {
    describe(`with ${renderer} the sign of a component`, { skip: missingBrowser }, () => {
        const browser = browserFor(renderer);
        let run;
        before(() => {
            run = madeUp('signs', {
                components: 2,
                balls: [ball(8), ball(-8)],
                constant: { dm_pred_max: 0.6 },
            });
        });

        const shown = async (page) => {
            await painted(page);
            const image = readPng(await page.locator('.brain-place').first().screenshot());
            let [orange, blue] = [0, 0];
            for (let y = 0; y < image.height; ++y) {
                for (let x = 0; x < image.width; ++x) {
                    const [r, , b] = image.at(x, y);
                    orange += r - b > 60 ? 1 : 0;
                    blue += b - r > 60 ? 1 : 0;
                }
            }
            return {
                flipped: await isFlipped(page),
                orange,
                blue,
                value: numberOf(await page.locator('[data-readout=value]').first().textContent()),
                course: (await chartData(page, 'course')).datasets[0].data.map(({ y }) => y),
                r: numberOf(
                    / r (\u2212?[0-9.]+)$/.exec(await page.locator('[data-metric=dm_pred_max]').textContent())[1],
                ),
            };
        };

        test('is that of the longer tail, and a flip changes map, time course and correlation together', async () => {
            const page = await openReport(browser, run.report);
            await page.addStyleTag({ content: '.brain-foot { opacity: 0; }' }); // has both colours
            for (const [c, name] of ['ICA_00', 'ICA_01'].entries()) {
                await showComponent(page, name, renderer);
                const before = await shown(page);
                assert.equal(before.flipped, c === 1);
                assert.ok(
                    before.value > 5 && before.orange > 20 * before.blue,
                    JSON.stringify({ ...before, course: 0 }),
                );
                await checkCrosshair(page, run, c);
                await page.locator('[data-action=flip]').first().click();
                await page.locator(`.brain[data-flipped=${c === 0}]`).waitFor();
                const after = await shown(page);
                assert.equal(after.value, -before.value);
                assert.ok(after.blue > 20 * after.orange, JSON.stringify({ ...after, course: 0 }));
                assert.equal(after.r, -before.r);
                after.course.forEach((y, t) => assert.ok(Math.abs(y - (1 - before.course[t])) < 1e-12));
                await page.keyboard.press('f');
                await page.locator(`.brain[data-flipped=${c === 1}]`).waitFor();
                assert.deepEqual(await shown(page), before);
            }
            await page.close();
        });

        test('is stated on the cards, follows a flip and is kept', async () => {
            const page = await openReport(browser, run.report);
            const cards = () => page.locator('.card-name').allTextContents();
            const r = () => page.locator('.card-predictor').allTextContents();
            assert.deepEqual(await cards(), ['ICA_00', 'ICA_01 \u00b7 flipped']);
            const [first, second] = await r();
            await showComponent(page, 'ICA_00', renderer);
            await page.keyboard.press('f');
            await page.locator('.brain[data-flipped=true]').waitFor();
            await goTo(page, '#/');
            assert.deepEqual(await cards(), ['ICA_00 \u00b7 flipped', 'ICA_01 \u00b7 flipped']);
            const swapped = first.includes('\u2212')
                ? first.replace('\u2212', '').replace(' (inverted)', '')
                : `${first.replace(' r ', ' r \u2212')} (inverted)`;
            assert.deepEqual(await r(), [swapped, second]);
            await page.reload();
            await page.locator('.card[data-drawn]').first().waitFor();
            assert.deepEqual(await cards(), ['ICA_00 \u00b7 flipped', 'ICA_01 \u00b7 flipped']);
            await page.evaluate(() => localStorage.clear());
            await page.close();
        });
    });
}
