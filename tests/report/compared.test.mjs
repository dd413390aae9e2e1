// Two results on one page: matching components side by side, sorted by their correlation.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { describe, test } from 'node:test';
import { browserFor, missingBrowser, openReport, screenshot, showComponent } from './browser.mjs';
import { CHART, cardNames, chartData, isFlipped, numberOf } from './page_contents.mjs';
import { madeUp, ZNICA } from './runs.mjs';

const PLACES = [
    [12, 24, 12],
    [27, 33, 15],
    [20, 12, 18],
    [13, 30, 24],
];
const ball = (place, height) => [{ centre: PLACES[place], radius: 5, height }];
const ORDER = [2, 0, 3, 1]; // the second result has the same components in another order, the first one inverted

for (const renderer of ['webgl2', 'canvas']) {
    describe(`with ${renderer} a page of two results`, { skip: missingBrowser }, () => {
        const browser = browserFor(renderer);

        test('shows matching components side by side, best match first', async () => {
            const options = { components: 4, grid: 'medium' };
            const first = madeUp(`first-${renderer}`, { ...options, balls: [0, 1, 2, 3].map((i) => ball(i, 8)) });
            const second = madeUp(`second-${renderer}`, {
                ...options,
                volumes: 110,
                balls: ORDER.map((place, i) => ball(place, i === 0 ? -9 : 9 - 2 * i)),
            });
            const alone = readFileSync(first.report).length;
            const table = execFileSync(ZNICA, ['compare', first.folder, second.folder], { encoding: 'utf8' });
            const pairs = table
                .split('\n')
                .filter((line) => line.startsWith('ICA_'))
                .map((line) => line.split('\t'));
            execFileSync(ZNICA, ['report', first.folder, '--compare', second.folder]);
            assert.ok(readFileSync(first.report).length < 2.2 * alone);

            const page = await openReport(browser, first.report);
            assert.deepEqual(
                await cardNames(page),
                pairs.map(([a]) => a),
            );
            const folder = `second-${renderer}`;
            for (const [a, b, r] of pairs) {
                assert.equal(Number(b.slice(4)), ORDER.indexOf(Number(a.slice(4))));
                const text = await page
                    .locator(`.card[data-component=${a}] .card-value span[title^=Spatial]`)
                    .textContent();
                const [, partner, shown] = /: IC (\d), r (\u2212?[\d.]+)$/.exec(text);
                assert.equal(Number(partner), Number(b.slice(4)) + 1);
                assert.ok(numberOf(shown) > 0, text); // both are shown with the longer tail positive
                assert.ok(Math.abs(Math.abs(r) - numberOf(shown)) < 0.1);
            }
            await showComponent(page, 'ICA_02', renderer);
            await page.locator('.brain:nth-child(2) .colour-bar').waitFor();
            assert.deepEqual(await page.locator('.brain-title').allTextContents(), ['IC 3', `${folder}: IC 1`]);
            assert.equal(await isFlipped(page), false);
            assert.equal(await page.locator('.brain').nth(1).getAttribute('data-flipped'), 'true');
            const values = (await page.locator('[data-readout=value]').allTextContents()).map(numberOf);
            assert.ok(values[0] > 4 && values[1] > 4, `${values}`);
            assert.deepEqual(page.complaints, []);
            await page.close();
        });
    });
}

describe('a page of two results', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');

    test('draws each time course and spectrum with its own repetition time', async () => {
        const first = madeUp('slow', { components: 2, volumes: 100, trMilliseconds: 2000 });
        const second = madeUp('fast', { components: 2, volumes: 161, trMilliseconds: 1500 });
        execFileSync(ZNICA, ['report', first.folder, '--compare', second.folder]);
        const page = await openReport(browser, first.report, { at: '#/component/ICA_00' });
        const ends = async (chart) =>
            (await chartData(page, chart)).datasets.slice(0, 2).map(({ data }) => data.at(-1).x);
        assert.deepEqual(await ends('course'), [99 * 2, 160 * 1.5]);
        const [slow, fast] = await ends('spectrum');
        assert.equal(slow, 0.25);
        assert.ok(Math.abs(fast - 1 / 3) < 1e-9, `${fast}`);
        const shown = (chart) =>
            page.locator(CHART(chart)).evaluate((canvas) => [canvas.chart.scales.x.min, canvas.chart.scales.x.max]);
        assert.deepEqual(await shown('course'), [0, 240]);
        await page.close();
    });

    test('shows a match with the sign that agrees, whatever its longer tail is, and says so', async () => {
        const balls = (first, second) => [
            [...ball(0, first), ...ball(1, second)],
            ball(2, 8), // another component, the same in both
        ];
        const [first, second] = [balls(8, -6), balls(-6, 8)].map((shape, i) =>
            madeUp(`opposite-${i}`, { components: 2, grid: 'medium', balls: shape }),
        );
        execFileSync(ZNICA, ['report', first.folder, '--compare', second.folder]);
        const page = await openReport(browser, first.report);
        const texts = await page.locator('.card-value span[title^=Spatial]').allTextContents();
        for (const text of texts) assert.ok(numberOf(/, r (\u2212?[\d.]+)$/.exec(text)[1]) > 0.5, text);
        await showComponent(page, 'ICA_00', 'canvas');
        await page.locator('.brain:nth-child(2) .colour-bar').waitFor();
        const flipped = () =>
            page.locator('.brain').evaluateAll((brains) => brains.map((brain) => brain.dataset.flipped));
        assert.deepEqual(await flipped(), ['false', 'true']);
        assert.match(await page.locator('.sign-note').textContent(), /The match in opposite-1 .* sign that agrees\.$/);
        await screenshot(page, 'compared-opposite');
        await page.keyboard.press('f');
        await page.locator('.brain:nth-child(1)[data-flipped=true]').waitFor();
        await page.locator('.brain:nth-child(2)[data-flipped=false]').waitFor();
        await page.keyboard.press('f');
        await page.close();
    });

    test('warns of values that are rescaled in each result, beside a component of the other one only', async () => {
        const [first, second] = ['one', 'two'].map((name) => madeUp(`rescaled-${name}`, { components: 2 }));
        execFileSync(ZNICA, ['report', first.folder, '--compare', second.folder]);
        const page = await openReport(browser, first.report, { at: '#/component/ICA_00' });
        const notes = page.locator('.rescaled-note');
        assert.equal(
            await notes.textContent(),
            'Do not compare skewness, kurtosis, spatial entropy, temporal entropy and the bands between the two '
                + 'results: they are rescaled across the components of each.',
        );
        await screenshot(page, 'compared-tables');
        await page.selectOption('#compare', { label: 'Compare with IC 2' });
        await notes.waitFor({ state: 'detached' });
        await page.close();
    });

    test('says of each result how often it was repeated, if at all', async () => {
        const repeated = (Runs, StabilityIndex) => ({
            Repeats: { Runs },
            Components: [0, 1].map((c) => ({ Name: `ICA_0${c}`, StabilityIndex, StabilityRuns: Runs - 1 })),
        });
        const stability = async (name, first, second) => {
            const [a, b] = [first, second].map((facts, i) => madeUp(`${name}-${i}`, { components: 2, facts }));
            execFileSync(ZNICA, ['report', a.folder, '--compare', b.folder]);
            const page = await openReport(browser, a.report, { at: '#/component/ICA_00' });
            const cells = await page.locator('td[data-metric=stability_iq]').allTextContents();
            await page.close();
            return cells;
        };
        assert.deepEqual(await stability('once', repeated(5, 0.91), {}), ['Iq 0.91, in 4 of 5 runs', 'not measured']);
        assert.deepEqual(await stability('often', repeated(5, 0.91), repeated(9, 0.75)), [
            'Iq 0.91, in 4 of 5 runs',
            'Iq 0.75, in 8 of 9 runs',
        ]);
    });
});
