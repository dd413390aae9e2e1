// What is on the screen without scrolling, and that nothing overlaps.
import assert from 'node:assert/strict';
import { before, describe, test } from 'node:test';
import { browserFor, missingBrowser, openReport, painted, showComponent } from './browser.mjs';
import { madeUp } from './runs.mjs';

const box = (page, selector) => page.locator(selector).first().boundingBox();

describe('the summary', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');
    let run;
    before(() => {
        run = madeUp('summary', { components: 12, facts: { Seed: 4294967295 } });
    });

    test('keeps a seed of ten digits apart from its neighbours', async () => {
        for (const width of [1440, 1100]) {
            const page = await openReport(browser, run.report, { viewport: { width, height: 900 } });
            // the boxes of the texts themselves, which may be wider than their tiles
            const boxes = await page.locator('.tile-value').evaluateAll((values) =>
                values.map((value) => {
                    const range = document.createRange();
                    range.selectNodeContents(value);
                    const { left, right, top, bottom } = range.getBoundingClientRect();
                    return { text: value.textContent, left, right, top, bottom };
                }),
            );
            assert.ok(boxes.some(({ text }) => text === '4294967295'));
            for (const a of boxes) {
                for (const b of boxes) {
                    if (a === b) continue;
                    const apart = a.right < b.left || b.right < a.left || a.bottom <= b.top || b.bottom <= a.top;
                    assert.ok(apart, JSON.stringify([a, b]));
                }
            }
            await page.close();
        }
    });

    for (const [width, height] of [
        [1024, 768],
        [390, 844],
    ]) {
        test(`leaves room for cards on the first screen of ${width} pixels`, async () => {
            const page = await openReport(browser, run.report, { viewport: { width, height } });
            const card = await box(page, '.card-mosaic');
            assert.ok(card.y + card.height <= height, JSON.stringify(card));
            assert.equal(await page.locator('.summary-body').isVisible(), false);
            await page.locator('.summary-line').click();
            assert.equal(await page.locator('.summary-body').isVisible(), true);
            await page.close();
        });
    }

    test('becomes one line at the first scroll and stays as the reader leaves it', async () => {
        const page = await openReport(browser, run.report);
        assert.equal(await page.locator('.summary-body').isVisible(), true);
        const scroll = () => page.evaluate(() => scrollTo(0, scrollY + 60));
        await scroll();
        await page.locator('.summary-body').waitFor({ state: 'hidden' });
        assert.match(
            await page.locator('.summary-line').textContent(),
            /^12 of 12 components · [\d,]+ voxels · 120 volumes, TR 2 s · 87\.3 % of variance kept · \d warnings?$/,
        );
        await page.locator('.summary-line').click();
        await scroll();
        await painted(page);
        assert.equal(await page.locator('.summary-body').isVisible(), true);
        await page.close();
    });

    test('shows the outline of the mask on the mean image', async () => {
        const page = await openReport(browser, run.report);
        await painted(page);
        const orange = await page.locator('.mask-picture').evaluate((canvas) => {
            const { data } = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);
            return data.filter((red, i) => i % 4 === 0 && red - data[i + 2] > 100).length;
        });
        assert.ok(orange > 500, `${orange}`);
        await page.close();
    });
});

for (const renderer of ['webgl2', 'canvas']) {
    describe(`with ${renderer} the view of a component`, { skip: missingBrowser }, () => {
        const browser = browserFor(renderer);
        let run;
        before(() => {
            run = madeUp('view', { components: 4, grid: 'brain' });
        });

        test('fits planes and time course into 1440 x 900', async () => {
            const page = await openReport(browser, run.report, { viewport: { width: 1440, height: 900 } });
            await showComponent(page, 'ICA_01', renderer);
            const planes = await box(page, '.planes:not(.planes-waiting)');
            const place = await box(page, '.brain-panel');
            const course = await box(page, '.chart-course');
            assert.ok(planes.width > place.width - 30, `${planes.width} of ${place.width}`);
            assert.ok(planes.y >= 0 && course.y + course.height <= 900, JSON.stringify([planes, course]));
            await page.close();
        });

        test('uses the corner below the smaller planes', async () => {
            const page = await openReport(browser, run.report, { viewport: { width: 1440, height: 900 } });
            await showComponent(page, 'ICA_01', renderer);
            await painted(page);
            const planes = await box(page, '.planes:not(.planes-waiting)');
            const foot = await box(page, '.brain-foot');
            assert.ok(foot.y + foot.height <= planes.y + planes.height + 10, JSON.stringify([planes, foot]));
            assert.ok(foot.x > planes.x + 0.25 * planes.width);
            await page.close();
        });

        test('has the charts before the fingerprint at 1024 pixels', async () => {
            const page = await openReport(browser, run.report, { viewport: { width: 1024, height: 768 } });
            await showComponent(page, 'ICA_01', renderer);
            const [course, fingerprint] = [await box(page, '.chart-course'), await box(page, '.chart-fingerprint')];
            assert.ok(course.y + course.height < fingerprint.y);
            await page.close();
        });
    });
}

describe('the 3D view', { skip: missingBrowser }, () => {
    const browser = browserFor('webgl2');

    test('is larger than the planes when asked for', async () => {
        const page = await openReport(browser, madeUp('render', { components: 2, grid: 'medium' }).report);
        await showComponent(page, 'ICA_00', 'webgl2');
        const before = await box(page, '.planes');
        await page.getByLabel('3D').check();
        await painted(page);
        const after = await box(page, '.planes');
        assert.ok(after.height > 2 * before.height, `${before.height} to ${after.height}`);
        assert.deepEqual(page.complaints, []);
        await page.close();
    });
});
