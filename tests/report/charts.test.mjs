// What the charts show, compared with numbers that do not come from the page.
import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { browserFor, missingBrowser, openReport } from './browser.mjs';
import { CHART, chartData } from './page_contents.mjs';
import { madeUp } from './runs.mjs';

/**
 * Welch's estimate in per cent of the total, in its plain form: the Fourier integral of every full segment of T / 4.5
 * volumes at the frequencies k / points, however long the segment. At these frequencies a segment longer than the
 * transform gives the same result as one that is wrapped around.
 */
function welchPerCent(course, points) {
    const length = Math.floor(course.length / 4.5);
    const step = length - Math.floor(length / 2);
    const mean = course.reduce((sum, value) => sum + value, 0) / course.length;
    const power = Array.from({ length: points / 2 + 1 }, (_, k) => {
        let sum = 0;
        for (let start = 0; start + length <= course.length; start += step) {
            let [re, im] = [0, 0];
            for (let n = 0; n < length; ++n) {
                const weighted =
                    (course[start + n] - mean) * (0.54 - 0.46 * Math.cos((2 * Math.PI * n) / (length - 1)));
                re += weighted * Math.cos((2 * Math.PI * k * n) / points);
                im += weighted * Math.sin((2 * Math.PI * k * n) / points);
            }
            sum += re ** 2 + im ** 2;
        }
        return sum;
    });
    const total = power.reduce((sum, value) => sum + value, 0);
    return power.map((value) => (100 * value) / total);
}

function covariance(x, y) {
    const mean = (values) => values.reduce((sum, value) => sum + value, 0) / values.length;
    const [mx, my] = [mean(x), mean(y)];
    return x.reduce((sum, value, t) => sum + (value - mx) * (y[t] - my), 0);
}

describe('charts', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');

    const open = (name, options, at = '#/component/ICA_00') =>
        openReport(browser, madeUp(`charts-${name}`, { components: 3, ...options }).report, { at });
    const spectrum = (page) =>
        page.locator(CHART('spectrum')).evaluate((canvas) => {
            const { x } = canvas.chart.scales;
            const labels = (scale) => scale?.ticks.map(({ label }) => label) ?? null;
            const title = canvas.chart.options.plugins.tooltip.callbacks.title([{ parsed: { x: 0.1 } }]);
            return { x: labels(x), end: x.max, title, text: canvas.getAttribute('aria-label') };
        });

    test('of spectra are in true Hz, with a note where the plug-in uses another clock', async () => {
        const page = await open('clock', { trMilliseconds: 2500 }); // taken as 2 s: 0.25 Hz stands for 0.2 Hz
        const { end, title, text } = await spectrum(page);
        assert.equal(end, 0.2);
        assert.equal(title, '0.1000 Hz');
        assert.match(text, /up to 0\.200 Hz with 5 bands/);
        const note = page.locator('.component-charts .chart-note');
        assert.match(await note.textContent(), /takes the repetition time of 2\.5 s as 2 s, .* are 25 % higher/);
        await page.close();
        const exact = await open('exact', {});
        assert.equal((await spectrum(exact)).title, '0.1000 Hz');
        assert.doesNotMatch(await exact.locator('.component-charts .chart-note').textContent(), /plug-in/);
        await exact.close();
    });

    test('of spectra end at the Nyquist frequency, without a rounded tick label there', async () => {
        const page = await open('fast', { trMilliseconds: 720 });
        const { x, end } = await spectrum(page);
        assert.ok(Math.abs(end - 1 / 1.44) < 1e-12);
        for (const label of x) assert.ok(Number(label) <= end, `${label} on an axis up to ${end}`);
        await page.close();
    });

    test('of spectra of long runs use full segments', async () => {
        // segments of 311, transforms of 256 points
        const run = madeUp('charts-long', { components: 2, volumes: 1400 });
        const page = await openReport(browser, run.report, { at: '#/component/ICA_01' });
        const shown = (await chartData(page, 'spectrum')).datasets[0].data.map(({ y }) => y);
        const wanted = welchPerCent(
            run.mixing.map((row) => Number(row.ICA_01)),
            256,
        );
        assert.equal(shown.length, wanted.length);
        shown.forEach((value, k) =>
            assert.ok(Math.abs(value - wanted[k]) < 1e-9 * 100, `${k}: ${value} for ${wanted[k]}`),
        );
        await page.close();
    });

    test('of fingerprints leave a gap where a value is missing', async () => {
        const page = await open('gap', {}, '#/component/ICA_02'); // its kurtosis is n/a
        const segments = await page
            .locator(CHART('fingerprint'))
            .evaluate((canvas) => canvas.chart.getDatasetMeta(0).dataset.segments.length);
        const spanned = await page
            .locator(CHART('fingerprint'))
            .evaluate((canvas) => canvas.chart.data.datasets[0].spanGaps);
        assert.deepEqual([segments, spanned], [1, false]);
        await page.close();
        const cards = await open('gap-cards', {}, '');
        // Opaque pixels near the centre: a value drawn at 0 would take the curve there.
        const inMiddle = (name) =>
            cards.locator(`.card[data-component=${name}] .card-glyph`).evaluate((canvas) => {
                const size = Math.round(canvas.width * 0.1);
                const { data } = canvas
                    .getContext('2d')
                    .getImageData((canvas.width - size) / 2, (canvas.height - size) / 2, size, size);
                return data.filter((alpha, i) => i % 4 === 3 && alpha > 200).length;
            });
        assert.equal(await inMiddle('ICA_02'), 0);
        await cards.close();
    });

    test('of spectra shade the five bands at the limits of the plug-in', async () => {
        const page = await open('bands', {});
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

    test('of time courses invert a predictor that is negatively correlated, and say so', async () => {
        const page = await open('inverted', { components: 6 });
        const labels = new Set();
        for (let c = 0; c < 6; ++c) {
            if (c > 0) await page.keyboard.press('ArrowRight');
            await page.locator('h2', { hasText: `IC ${c + 1}` }).waitFor();
            const [course, predictor] = (await chartData(page, 'course')).datasets;
            const [drawn, drawnPredictor] = [course, predictor].map(({ data }) => data.map(({ y }) => y));
            assert.ok(covariance(drawn, drawnPredictor) > 0, predictor.label);
            const negative = (await page.locator('.matches [data-metric=dm_pred_max]').textContent()).includes(
                '\u2212',
            );
            assert.match(predictor.label, negative ? /^\w+ hand \(scaled, inverted\)$/ : /^\w+ hand \(scaled\)$/);
            labels.add(negative);
        }
        assert.equal(labels.size, 2); // both signs occur
        await page.close();
    });
});
