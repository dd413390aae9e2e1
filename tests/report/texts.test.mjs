// What the page says about a run.
import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { browserFor, goTo, missingBrowser, openReport, showComponent } from './browser.mjs';
import { CHART, chartData, isFlipped, numberOf } from './page_contents.mjs';
import { madeUp } from './runs.mjs';

function pearson(x, y) {
    const mean = (values) => values.reduce((sum, value) => sum + value, 0) / values.length;
    const [dx, dy] = [x, y].map((values) => values.map((value) => value - mean(values)));
    const dot = (a, b) => a.reduce((sum, value, i) => sum + value * b[i], 0);
    return dot(dx, dy) / Math.sqrt(dot(dx, dx) * dot(dy, dy));
}

describe('the page says', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');
    let made = 0;

    const open = (options, at) =>
        openReport(browser, madeUp(`texts-${++made}`, { components: 3, ...options }).report, { at });
    const textOf = async (options, selector, hash = '#/') => {
        const page = await open(options);
        await goTo(page, hash);
        const text = (await page.locator(selector).allTextContents()).join('\n');
        await page.close();
        return text;
    };
    const warnings = (options) => textOf(options, '.warnings li');
    const methods = (options) => textOf(options, '#methods-text', '#/methods');
    const references = (options) => textOf(options, '.references li', '#/methods');

    test('how many voxels were excluded, and why', async () => {
        const text = (NotFinite, Constant) => warnings({ input: { VoxelsDropped: { NotFinite, Constant } } });
        assert.match(
            await text(1200, 34),
            /1,234 voxels of the mask were excluded: 1,200 with non-finite values, 34 constant over time\./,
        );
        assert.match(await text(0, 1), /1 voxel of the mask was excluded: 1 constant over time\./);
        assert.doesNotMatch(await text(0, 0), /excluded/);
        assert.doesNotMatch(await warnings({}), /excluded/); // a result that does not say
    });

    test('what was noted about the input', async () => {
        const Notes = [
            { Code: 'repetition-time-disagreement', Text: 'The header says 3 s, the sidecar 2 s.' },
            'Volume 7 is dark.', // as in older results
        ];
        assert.match(
            await warnings({ input: { Notes } }),
            /^The header says 3 s, the sidecar 2 s\.\nVolume 7 is dark\./m,
        );
        assert.equal(await warnings({ components: 2, input: { Notes: [] } }), '');
    });

    test('what happens to the frequency bands in its own words, whatever the note on them says', async () => {
        const Notes = [{ Code: 'frequency-bands', Text: 'Fewer bands than usual.' }];
        const lines = (await warnings({ components: 2, trMilliseconds: 6000, input: { Notes } })).split('\n');
        assert.equal(lines.length, 1);
        assert.match(lines[0], /of the five power bands/);
    });

    test('where the voxels come from', async () => {
        const none = { settings: { Mask: 'none' } };
        assert.match(await methods(none), /voxels of the whole grid, without a mask,/);
        assert.match(await warnings(none), /No mask was used/);
        const auto = { settings: { Mask: 'auto' } };
        assert.match(await methods(auto), /voxels inside a brain mask derived from the temporal mean image/);
        assert.equal(await warnings({ components: 2, ...auto }), '');
        const inside = Number(/of ([\d,]+) voxels/.exec(await methods(auto))[1].replace(',', ''));
        const excluded = { VoxelsDropped: { NotFinite: 0, Constant: 26 * 30 * 24 - inside } }; // of the whole grid
        assert.match(
            await methods({ ...auto, input: excluded }),
            /voxels of the whole grid, because the temporal mean image did not show where the brain is, entered/,
        );
        assert.match(await methods({}), /voxels inside a mask entered/);
    });

    test('which frequency bands are in use and on which clock', async () => {
        assert.match(await methods({}), /in five frequency bands \(Welch, 1967\), relative/);
        assert.match(
            await methods({ trMilliseconds: 2500 }),
            /five frequency bands \(Welch, 1967\) with the repetition time taken as 2 s,/,
        );
        assert.match(await methods({ trMilliseconds: 6000 }), /in four frequency bands/); // up to 0.083 Hz
        assert.match(await methods({ trMilliseconds: 11000 }), /in three frequency bands/); // up to 0.045 Hz
        assert.match(await methods({ trMilliseconds: 720 }), /not defined at a repetition time below one second/);
    });

    test('which parameters were rescaled across components', async () => {
        const [, before, rescaled] = /the spread(.*)each rescaled across the components of the run,([^.]*)\./.exec(
            await methods({}),
        );
        assert.match(before, /clustering.*lag-1 autocorrelation/);
        assert.match(rescaled, /skewness.*kurtosis and entropy of its map and the entropy of its time course/);
    });

    test('how often the run was repeated and what was discarded', async () => {
        assert.match(
            await methods({ facts: { Repeats: { Runs: 7 } } }),
            /extraction was run 7 times.*Iq.*Himberg et al\., 2004/,
        );
        assert.match(await references({ facts: { Repeats: { Runs: 7 } } }), /Himberg.*NeuroImage, 22/);
        assert.doesNotMatch(await references({}), /Himberg|Wax/);
        assert.match(await methods({ input: { DummyScans: 4 } }), /4 initial volumes were discarded beforehand/);
        assert.match(await methods({}), /at most five restarts in the whole run/);
    });

    test('how the number of components was found', async () => {
        const earlier = { MDL: 3, Laplace: 5, OptimalThreshold: 4, EffectiveSamples: 2407.3 };
        const textOf = (ComponentEstimate) => methods({ facts: { ComponentEstimate } });
        assert.match(
            await textOf(earlier),
            /number of components, 3, was estimated .* minimum description length \(Wax & Kailath, 1985\), assuming 2407 /,
        );
        const estimate = { ParallelAnalysis: 9, ...earlier, Noise: { HasEdge: true } };
        assert.match(
            await textOf(estimate),
            /number of components, 9, was estimated by parallel analysis \(Dobriban & Owen, 2019\)/,
        );
        assert.doesNotMatch(await textOf(estimate), /approximate|minimum description/);
        assert.match(
            await textOf({ ...estimate, Noise: { HasEdge: false } }),
            /No clear gap separated .* so the number is approximate\./,
        );
        assert.match(await references({ facts: { ComponentEstimate: estimate } }), /Dobriban.*Statistical Society B/);
        assert.doesNotMatch(await references({ facts: { ComponentEstimate: estimate } }), /Wax/);
        assert.match(await references({ facts: { ComponentEstimate: earlier } }), /Wax/);
    });

    test('how the data were prepared', async () => {
        const nothing = {
            SmoothingAsked: 0,
            SmoothingFWHM: 0,
            EstimatedFWHM: null,
            HighPassSeconds: 0,
            CosinesRemoved: 0,
            Scaling: 'none',
        };
        const text = (Preparation) => methods({ facts: { Preparation: { ...nothing, ...Preparation } } });
        assert.doesNotMatch(await text({}), /Beforehand/);
        assert.match(
            await text({ SmoothingFWHM: 6, HighPassSeconds: 128, CosinesRemoved: 4, Scaling: 'sd' }),
            new RegExp(
                'spatial mean of each volume was removed\\. Beforehand, the data were smoothed within the mask with a '
                    + 'Gaussian of 6 mm full width at half maximum; then high-pass filtered by removing 4 discrete '
                    + 'cosines with periods above 128 s; then scaled to zero mean and unit variance',
            ),
        );
        assert.match(
            await text({ SmoothingAsked: 'auto', SmoothingFWHM: 5 }),
            /Gaussian of 5 mm full width at half maximum, chosen from the smoothness of the data\. The data were reduced/,
        );
        assert.match(
            await text({ SmoothingAsked: 'auto', SmoothingFWHM: 5, Scaling: 'percent' }),
            /chosen from the smoothness of the data; then scaled to per cent/,
        );
        const share = { Eigenvalues: [80, 10, 6, 4], Preparation: { ...nothing, Scaling: 'sd' } };
        assert.doesNotMatch(await methods({ facts: share }), /the mean image\)/);
    });

    test('which approach found the components', async () => {
        assert.match(await methods({}), /in its deflation form/);
        const Starts = [1, 2, 3].map((n) => ({ Iterations: 20 + n, Converged: true, Negentropy: n, Agreement: 0.9 }));
        const SymmetricEstimate = { StartVoxels: 1, Starts, ChosenStart: 3, Iterations: 15, Negentropy: 2 };
        const text = await methods({ facts: { SymmetricEstimate } });
        assert.match(text, /estimated together by the fixed-point algorithm FastICA with symmetric decorrelation/);
        assert.match(text, /Of 3 random starts on 1 voxel chosen at random, the one with the largest negentropy/);
        assert.match(text, /finished on all voxels in 15 iterations/);
        assert.match(text, /descending order of explained variance/);
        assert.match(text, /the third moment of its map is positive/);
        assert.doesNotMatch(text, /deflation|restarts|arbitrary/);
        assert.match(await references({ facts: { SymmetricEstimate } }), /Walker, H\. F\./);
    });

    test('what share of the variance is the mean image', async () => {
        const facts = { Eigenvalues: [80, 10, 6, 4], RetainedVariancePercent: 96 };
        assert.match(
            await methods({ facts }),
            /\(96\.0 % of the variance; 80\.0 % in the first, which represents the mean image\)/,
        );
        assert.match(
            await textOf({ facts }, '.tile-detail'),
            /eigenvalues 1 to 3; the first \(the mean image\) alone 80\.0 %/,
        );
        const without = { facts, settings: { FirstEigenvalue: 2, LastEigenvalue: 4 } };
        assert.doesNotMatch(await methods(without), /the mean image\)/);
        assert.match(
            await methods({ components: 1, settings: { LastEigenvalue: 1 } }),
            /reduced to the largest principal component of/,
        );
    });

    test('that parameters rescaled across components say nothing about a single one', async () => {
        assert.match(await warnings({ components: 1 }), /a single component: .* say nothing about it/);
        assert.doesNotMatch(await warnings({ components: 2 }), /single component/);
    });

    test('which parameters are the same for every component, also when clustering was not estimated', async () => {
        const same = { constant: { power_band_3: 1, degree_of_clustering: 0 } };
        assert.match(await warnings(same), /^Clustering, Band\u00a03: the same for every component/m);
        const skipped = await warnings({ ...same, settings: { ClusterSize: null } });
        assert.match(skipped, /^Band\u00a03: the same for every component/m);
        assert.match(skipped, /clustering was not estimated/);
    });

    test('that the lag-1 autocorrelation may exceed 1, where it does', async () => {
        const note = (value) => textOf({ constant: { lag1_autocorr: value } }, '.lag1-note', '#/component/ICA_00');
        assert.match(await note(1.004), /^\* May exceed 1: the definition sums one product more/);
        assert.equal(await note(0.98), '');
    });

    test('no value for a frequency band that is undefined at the repetition time', async () => {
        const bands = async (trMilliseconds) => {
            const page = await open({ trMilliseconds }, '#/component/ICA_00');
            const cells = await page.locator('td[data-metric^=power_band]').allTextContents();
            await page.close();
            return cells.map((cell) => cell === 'n/a');
        };
        assert.deepEqual(await bands(720), [true, true, true, true, true]);
        assert.deepEqual(await bands(6000), [false, false, false, false, true]);
        assert.deepEqual(await bands(2000), [false, false, false, false, false]);
        assert.match(
            await warnings({ trMilliseconds: 6000 }),
            /ends at 0\.083 Hz: only 4 of the five power bands are in use/,
        );
    });

    test('how a component and its best predictor are correlated, with the sign shown', async () => {
        const run = madeUp('signs', { components: 12 });
        const page = await openReport(browser, run.report);
        const signs = new Set();
        for (const [c, row] of run.metrics.entries()) {
            await goTo(page, `#/component/${row.component}`);
            await page.locator('h2', { hasText: new RegExp(`^IC ${c + 1}$`) }).waitFor();
            const flipped = await isFlipped(page);
            const r = pearson(
                run.mixing.map((line) => (flipped ? -1 : 1) * Number(line[row.component])),
                run.design.map((line) => Number(line[row.dm_pred_name])),
            );
            const text = await page.locator('.matches [data-metric=dm_pred_max]').textContent();
            const shown = numberOf(/, r (\u2212?[0-9.]+)$/.exec(text)[1]);
            assert.ok(Math.abs(Math.abs(shown) - row.dm_pred_max) <= 0.0005001, text);
            assert.equal(Math.sign(shown), Math.sign(r), `${text}, r ${r}`);
            signs.add(Math.sign(r));
        }
        assert.equal(signs.size, 2); // both signs occur
        assert.match(await page.locator('.sign-note').textContent(), /sign of a component is arbitrary/);
        await page.close();
        assert.match(await methods({}), /sign of a component is arbitrary/);
    });

    test('on a card how strong the predictor is, unless it is weak', async () => {
        const run = madeUp('strengths', { components: 12 });
        const page = await openReport(browser, run.report);
        for (const { component, dm_pred_name: name, dm_pred_max: strength } of run.metrics) {
            const text = await page
                .locator(`.card[data-component=${component}] .card-predictor:visible`)
                .allTextContents();
            const shown = text.map((line) => line.replace('\u2212', '').replace(' (inverted)', ''));
            assert.deepEqual(shown, strength < 0.3 ? [] : [`${name} r ${Number(strength).toFixed(2)}`], strength);
        }
        assert.ok(run.metrics.some(({ dm_pred_max: strength }) => strength < 0.3));
        await page.close();
    });

    test('the threshold of the run, even where it is beyond the usual range', async () => {
        const page = await open({ settings: { ZThreshold: 20 } }, '#/component/ICA_00');
        assert.equal(await page.inputValue('#threshold'), '20');
        assert.equal(await page.locator('output[for=threshold]').textContent(), '20.0');
        await page.close();
    });

    test('in plain words what limits a run', async () => {
        const limited = madeUp('limited', { components: 3, asked: 5, trMilliseconds: 2500, design: false });
        const page = await openReport(browser, limited.report);
        const warnings = (await page.locator('.warnings li').allTextContents()).join('\n');
        assert.match(warnings, /stopped early: 3 of 5/);
        assert.match(warnings, /2\.5 s as 2 s/);
        assert.match(warnings, /n\/a\) for Kurtosis/);
        await showComponent(page, 'ICA_00', 'canvas');
        const end = await page.locator(CHART('spectrum')).evaluate((canvas) => canvas.chart.scales.x.max);
        assert.equal(end, 0.2); // the true Nyquist frequency
        assert.equal((await chartData(page, 'course')).datasets.length, 1); // no predictor to show
        assert.match(await page.locator('.matches').textContent(), /none/);
        await page.close();
    });

    test('the numbers of the run in the methods paragraph', async () => {
        const page = await open({ components: 30 });
        await goTo(page, '#/methods');
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
});
