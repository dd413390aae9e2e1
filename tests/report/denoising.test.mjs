// The page that shows what denoising did.
import assert from 'node:assert/strict';
import { before, describe, test } from 'node:test';
import { browserFor, goTo, missingBrowser, openReport, screenshot } from './browser.mjs';
import { chartData } from './page_contents.mjs';
import { denoised, denoisedBy, denoisedByNothing, grown, hardlyLabelled, madeUp } from './runs.mjs';

function lowestOf({ size: [nx, ny, nz], at }) {
    let lowest = Infinity;
    for (let z = 0; z < nz; ++z) {
        for (let y = 0; y < ny; ++y) for (let x = 0; x < nx; ++x) lowest = Math.min(lowest, at([x, y, z]));
    }
    return lowest;
}

// The grey levels of a canvas, row by row.
function greysOf(canvas) {
    const { width, height } = canvas;
    const { data } = canvas.getContext('2d').getImageData(0, 0, width, height);
    return { width, height, greys: Array.from({ length: width * height }, (_, i) => data[4 * i]) };
}

describe('the page of a denoised image', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');
    let image;
    before(() => {
        if (!missingBrowser) image = denoised();
    });

    test('comes first, and leads to the others', async () => {
        const page = await openReport(browser, image.report, { at: '#' });
        assert.equal(await page.locator('h2').first().textContent(), '2 of 6 components removed');
        assert.equal(await page.locator('.tab[aria-current]').textContent(), 'Denoising');
        await page.getByRole('link', { name: 'IC 2' }).click();
        await page.locator('body[data-shown=ICA_01]').waitFor();
        await page.getByRole('link', { name: 'Overview' }).click();
        await page.locator('.card[data-drawn]').first().waitFor();
        await goTo(page, '#/denoising');
        await page.locator('.carpet').first().waitFor();
        assert.deepEqual(page.complaints, []);
        assert.deepEqual(
            page.requests.filter((url) => !/^(file|data|blob):/.test(url)),
            [],
        );
        await page.close();
    });

    test('has its sentence in the methods, with the papers', async () => {
        const page = await openReport(browser, image.report, { at: '#/denoising' });
        await goTo(page, '#/methods');
        const text = await page.locator('#methods-text').textContent();
        const { before, after } = image.quality.find(({ measure }) => measure === 'degrees_of_freedom');
        const cosines = image.parts.find(({ component }) => component === 'high_pass').reason;
        assert.ok(
            text.endsWith(
                '2 of 6 components were rejected and removed from the image: the time course of every voxel was '
                    + `regressed on the time courses of all components and ${cosines} with periods above 80 s, and the `
                    + 'part of the fit that belongs to the rejected components and cosines was subtracted '
                    + '(non-aggressive; Griffanti et al., 2014; Pruim et al., 2015). '
                    + `This left ${after} of ${before} degrees of freedom.`,
            ),
            text,
        );
        const references = await page.locator('.references li').allTextContents();
        assert.deepEqual([...references].sort(), references);
        assert.equal(references.filter((reference) => /^(Griffanti|Pruim)/.test(reference)).length, 2);
        await page.close();
    });

    test('shows the measures of the table', async () => {
        const page = await openReport(browser, image.report, { at: '#/denoising' });
        for (const { measure, before, after } of image.quality) {
            const cells = await page.locator(`tr[data-measure=${measure}] td`).allTextContents();
            assert.deepEqual(
                cells,
                [before, after].map(
                    (cell) => `${Number(Number(cell).toPrecision(4))}${measure === 'variance' ? ' %' : ''}`,
                ),
                measure,
            );
        }
        assert.equal(
            await page.locator('tr[data-measure=variance] th').textContent(),
            'Variance over time (of that before)',
        );
        assert.equal(await page.locator('tr[data-measure=dvars_fd_correlation]').count(), 1);
        await page.close();
    });

    test('says what was removed and why, the largest part first, and what was kept', async () => {
        const page = await openReport(browser, image.report, { at: '#/denoising' });
        const removed = image.parts.filter(({ classification }) => classification === 'rejected');
        removed.sort((a, b) => b.variance_removed - a.variance_removed);
        const names = (table) =>
            page.locator(`${table} tbody tr`).evaluateAll((rows) => rows.map((row) => row.dataset.part));
        assert.deepEqual(
            await names('.fates-removed'),
            removed.map(({ component }) => component),
        );
        assert.deepEqual(await names('.fates-kept'), ['ICA_00', 'ICA_02', 'ICA_04', 'ICA_05']);
        const cells = await page.locator('tr[data-part=ICA_01] td').allTextContents();
        assert.deepEqual(cells.slice(0, 2), ['noise', 'rim <b>of</b> the brain']);
        const unlabelled = await page.locator('tr[data-part=ICA_00] td').first().textContent();
        assert.equal(unlabelled, 'no label');
        await page.close();
    });

    test('draws DVARS before and after, and framewise displacement', async () => {
        const page = await openReport(browser, image.report, { at: '#/denoising' });
        const { datasets: dvars } = await chartData(page, 'dvars');
        const drawn = dvars.map(({ data }) => data.map(({ y }) => y));
        for (const [curve, column] of ['dvars_before', 'dvars_after'].entries()) {
            assert.equal(drawn[curve].length, image.volumes.length);
            image.volumes.slice(1).forEach((row, t) => {
                assert.ok(Math.abs(drawn[curve][t + 1] - row[column]) < 1e-4 * row[column]);
            });
        }
        const { datasets: displacement } = await chartData(page, 'fd');
        assert.equal(displacement[0].data[4].y.toFixed(4), Number(image.volumes[4].framewise_displacement).toFixed(4));
        await page.close();
    });

    test('draws the carpets of the tables, one pixel per voxel and volume', async () => {
        const page = await openReport(browser, image.report, { at: '#/denoising' });
        const { width, height, greys } = await page.locator('.carpet').first().evaluate(greysOf);
        const voxels = Object.keys(image.carpetBefore[0]);
        assert.deepEqual([width, height], [image.carpetBefore.length, voxels.length]);
        for (const [t, row] of image.carpetBefore.entries()) {
            voxels.forEach((voxel, v) => {
                const value = Math.min(3, Math.max(-3, Number(row[voxel])));
                assert.ok(Math.abs(greys[v * width + t] - (255 * (value + 3)) / 6) <= 1);
            });
        }
        await page.close();
    });

    test('draws three maps in colours', async () => {
        const page = await openReport(browser, image.report, { at: '#/denoising' });
        const captions = await page.locator('.evidence-caption').allTextContents();
        assert.match(
            captions.join(),
            /^Temporal SNR before0\d+,Temporal SNR after0\d+,Variance removed, per cent\u2212\d+0\d+$/,
        );
        for (const canvas of await page.locator('.evidence-map').all()) {
            await canvas.scrollIntoViewIfNeeded();
            const coloured = await canvas.evaluate((element) => {
                const { data } = element.getContext('2d').getImageData(0, 0, element.width, element.height);
                let count = 0;
                for (let i = 0; i < data.length; i += 4) count += Math.abs(data[i] - data[i + 2]) > 30 ? 1 : 0;
                return count / (data.length / 4);
            });
            assert.ok(coloured > 0.1, `${coloured}`);
        }
        await screenshot(page, 'denoising');
        await page.close();
    });

    test('gives the map of the removed variance a scale of both signs, up to 100 % at most', async () => {
        const image = grown();
        const page = await openReport(browser, image.report, { at: '#/denoising' });
        const caption = page.locator('.evidence-caption').last();
        assert.equal(await caption.textContent(), 'Variance removed, per cent\u2212100' + '0' + '100');
        const strips = await caption
            .locator('.colour-strip')
            .evaluateAll((all) => all.map((strip) => strip.style.background.match(/\d+/g).slice(0, 3).map(Number)));
        assert.equal(strips.length, 2);
        assert.ok(strips[0][2] > strips[0][0], 'blue for the growth');
        assert.ok(strips[1][0] > strips[1][2], 'orange for what was removed');
        const grew = /^Blue: voxels whose variance grew, by up to (\d+) %,/;
        const [, most] = grew.exec(await page.locator('.maps-panel .chart-note').textContent());
        assert.equal(Number(most), Math.ceil(-lowestOf(image.removedVariance())));
        await caption.scrollIntoViewIfNeeded();
        await screenshot(page, 'denoising-grown');
        await page.close();
    });

    test('mentions no growth where the variance of no voxel grew', async () => {
        const image = denoisedBy('aggressive', '--reject', '2', '--method', 'aggr');
        assert.equal(lowestOf(image.removedVariance()), 0);
        const page = await openReport(browser, image.report, { at: '#/denoising' });
        assert.match(await page.locator('.evidence-caption').last().textContent(), /^Variance removed, per cent0\d+$/);
        assert.equal(await page.locator('.maps-panel .chart-note').textContent(), '');
        await page.close();
    });

    test('fits into a narrow window, in the dark too', async () => {
        const narrow = { at: '#/denoising', viewport: { width: 390, height: 800 }, dark: true };
        const page = await openReport(browser, image.report, narrow);
        const overflow = await page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
        assert.ok(overflow <= 0, `${overflow}`);
        await screenshot(page, 'denoising-narrow');
        assert.deepEqual(page.complaints, []);
        await page.close();
    });

    const summaryAndMethods = async (image) => {
        const page = await openReport(browser, image.report, { at: '#/denoising' });
        const summary = await page.locator('.denoising-summary > p').first().textContent();
        const heads = await page.locator('.fates').evaluateAll((tables) => tables.map((table) => table.className));
        await goTo(page, '#/methods');
        const text = await page.locator('#methods-text').textContent();
        const references = (await page.locator('.references li').allTextContents()).join();
        await page.close();
        return { summary, tables: heads.length, denoising: /(\d|None)[^.]* rejected.*$/.exec(text)[0], references };
    };

    test('says that nothing was removed where nothing was', async () => {
        const { summary, tables, denoising, references } = await summaryAndMethods(denoisedByNothing('nothing'));
        assert.equal(summary, 'No component was rejected: nothing was removed, and the image stays as it is.');
        assert.equal(tables, 1); // what was kept
        assert.equal(denoising, 'None of the 6 components was rejected, so nothing was removed from the image.');
        assert.doesNotMatch(references, /Griffanti|Pruim/);
    });

    test('says that only drifts were removed where no component was rejected', async () => {
        const of = (name, method) =>
            summaryAndMethods(denoisedByNothing(name, '--high-pass', '40', '--method', method));
        const { summary, denoising } = await of('drifts', 'nonaggr');
        assert.equal(summary, 'No component was rejected: only confounds or slow drifts were removed.');
        assert.match(
            denoising,
            /^None of the 6 components was rejected, but cosines were removed from the image: the time course of every voxel was regressed on the time courses of all components and \d+ .* above 40 s, and the part of the fit that belongs to cosines was subtracted/,
        );
        assert.match(
            (await of('drifts-aggr', 'aggr')).denoising,
            /: the time course of every voxel was regressed on \d+ .* above 40 s, and the fit was subtracted/,
        );
    });

    test('counts many components without a label instead of naming them, because the table does', async () => {
        const page = await openReport(browser, hardlyLabelled(14).report, { at: '#/denoising' });
        const notes = await page.locator('.denoising-notes li').allTextContents();
        assert.ok(
            notes.includes('Components: 13 without a label, kept (see the table of components).'),
            notes.join('\n'),
        );
        assert.equal(await page.locator('.fates-kept td', { hasText: 'no label' }).count(), 13);
        await page.close();
    });

    test('fades the lower edge of its tables until the reader has scrolled to their end', async () => {
        const page = await openReport(browser, image.report, { at: '#/denoising' });
        const box = page.locator('.fates-scroll');
        const fades = () => box.evaluate((element) => element.hasAttribute('data-more-below'));
        assert.equal(await fades(), false); // six components fit
        await page.addStyleTag({ content: '.fates-scroll { max-height: 120px !important; }' });
        await page.locator('.fates-scroll[data-more-below]').waitFor();
        await screenshot(page, 'denoising-more');
        await box.evaluate((element) => element.scrollTo(0, element.scrollHeight));
        await page.locator('.fates-scroll:not([data-more-below])').waitFor();
        await page.close();
    });

    test('is missing from the report of a run', async () => {
        const run = madeUp('not-denoised', { components: 3 });
        const page = await openReport(browser, run.report);
        assert.deepEqual(await page.locator('.tab').allTextContents(), ['Overview', 'Component', 'Methods']);
        await goTo(page, '#/denoising');
        await page.locator('.card[data-drawn]').first().waitFor();
        assert.deepEqual(page.complaints, []);
        await page.close();
    });
});
