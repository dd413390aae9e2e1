// What the cards of the gallery show of a map: its largest clusters, without speckle, on slices that each appear once.
import assert from 'node:assert/strict';
import { describe, test } from 'node:test';
import { browserFor, goTo, missingBrowser, openReport, showComponent, until } from './browser.mjs';
import { madeUp } from './runs.mjs';

// Places in the medium grid of 40 x 48 x 36 voxels, far apart: each component's largest cluster, then a smaller one.
const PLACES = [
    [12, 24, 9],
    [27, 33, 12],
    [20, 12, 18],
    [13, 30, 24],
    [24, 19, 25],
    [20, 38, 20],
];
const BALLS = PLACES.map((centre, c) => [
    { centre, radius: 4, height: c % 2 === 0 ? 8 : -8 },
    { centre: PLACES[(c + 2) % PLACES.length], radius: 3, height: 12 }, // hotter, but smaller
]);
const SPECK = { centre: [20, 24, 18], radius: 1.5, height: 30 }; // seven voxels

const drawn = async (page, name) => {
    const card = page.locator(`.card[data-component=${name}][data-drawn] .card-mosaic`);
    return {
        card,
        slices: JSON.parse(await card.getAttribute('data-slices')),
        text: await card.getAttribute('aria-label'),
    };
};

/** Colours of a voxel of the medium grid on every slice of a card that contains it. Its mask begins at 4, 5 and 4. */
async function coloursAt({ card, slices }, voxel) {
    const axes = { axial: [0, 1, 2], coronal: [0, 2, 1], sagittal: [1, 2, 0] };
    const first = [4, 5, 4].map((v) => v - 1); // with the margin of one voxel
    const counts = [40, 48, 36].map((n, axis) => n - 2 * first[axis]);
    const points = slices
        .filter(({ plane, position }) => voxel[axes[plane][2]] === position)
        .map(({ plane, x, y, width, height }) => {
            const [across, up] = axes[plane];
            return [
                x + (width * (voxel[across] - first[across] + 0.5)) / counts[across],
                y + height * (1 - (voxel[up] - first[up] + 0.5) / counts[up]),
            ];
        });
    return card.evaluate(
        (canvas, places) =>
            places.map(([x, y]) => [
                ...canvas
                    .getContext('2d')
                    .getImageData(x * canvas.width, y * canvas.width, 1, 1)
                    .data.slice(0, 3),
            ]),
        points,
    );
}

const isColoured = ([r, g, b]) => Math.max(r, g, b) - Math.min(r, g, b) > 25; // the strong ends are pale

for (const renderer of ['webgl2', 'canvas']) {
    describe(`with ${renderer} a card`, { skip: missingBrowser }, () => {
        const browser = browserFor(renderer);

        test('shows the largest cluster on all three planes, and the peak', async () => {
            const page = await openReport(
                browser,
                madeUp('places', { components: 6, grid: 'medium', balls: BALLS }).report,
            );
            for (const [c, place] of PLACES.entries()) {
                const shown = await drawn(page, `ICA_0${c}`);
                assert.deepEqual(
                    shown.slices.slice(0, 3).map(({ plane, position }) => [plane, position]),
                    [
                        ['axial', place[2]],
                        ['coronal', place[1]],
                        ['sagittal', place[0]],
                    ],
                );
                const largest = await coloursAt(shown, place);
                assert.ok(largest.length >= 3 && largest.every(isColoured), `${c}: ${JSON.stringify(largest)}`);
                const peak = await coloursAt(shown, PLACES[(c + 2) % PLACES.length]);
                assert.ok(peak.length >= 1 && peak.every(isColoured), `${c}: ${JSON.stringify(peak)}`);
                assert.match(shown.text, /three planes through the largest cluster and 5 axial slices/);
            }
            await page.close();
        });

        test('opens at the largest cluster, not at the hottest voxel', async () => {
            const page = await openReport(
                browser,
                madeUp('opens', { components: 6, grid: 'medium', balls: BALLS }).report,
            );
            await showComponent(page, 'ICA_03', renderer);
            assert.equal(await page.locator('[data-readout=voxel]').textContent(), PLACES[3].join(', '));
            await page.keyboard.press('p');
            assert.equal(await page.locator('[data-readout=voxel]').textContent(), PLACES[5].join(', '));
            await page.close();
        });
    });
}

describe('a card', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');

    for (const [slices, shown] of [
        [1, 1],
        [3, 3],
        [5, 5],
        [13, 8],
        [40, 8],
    ]) {
        test(`of ${slices} axial slices shows ${shown} slices, each once`, async () => {
            const run = madeUp(`slices-${slices}`, { components: 2, slices });
            const page = await openReport(browser, run.report);
            const { card, slices: all, text } = await drawn(page, 'ICA_00');
            assert.equal(all.length, shown);
            assert.equal(new Set(all.map(({ plane, position }) => `${plane} ${position}`)).size, shown);
            if (slices <= 5) {
                assert.deepEqual(
                    all.map(({ position }) => position),
                    Array.from({ length: slices }, (_, i) => i),
                );
                assert.match(text, new RegExp(`^Map of IC 1, ${slices} axial slices?; z from`));
            }
            const { width, height } = await card.evaluate(({ width, height }) => ({ width, height }));
            if (slices === 1) {
                assert.ok(all[0].width > 0.99 && Math.abs(all[0].height * width - height) <= 1, JSON.stringify(all));
            }
            for (const { x, y, width: across, height: up } of all) {
                assert.ok(x >= 0 && x + across <= 1.001 && y >= 0 && (y + up) * width <= height + 1);
            }
            await page.close();
        });
    }

    test('does not colour clusters of fewer voxels than the reader asks for, nor does the view', async () => {
        const balls = [
            [BALLS[0][0], SPECK],
            [BALLS[1][0], SPECK],
        ];
        const page = await openReport(browser, madeUp('speckle', { components: 2, grid: 'medium', balls }).report);
        const speck = async () => {
            // the planes do not contain it before it is coloured
            const shown = await drawn(page, 'ICA_00');
            return (await coloursAt(shown, SPECK.centre)).some(isColoured);
        };
        assert.equal(await speck(), false);
        await showComponent(page, 'ICA_00', 'canvas');
        await page.keyboard.press('p'); // the speck is the peak
        assert.equal(await page.locator('[data-readout=voxel]').textContent(), SPECK.centre.join(', '));
        const centre = () =>
            page.locator('.plane[data-plane=axial]').evaluate((canvas) => {
                const { width, height } = canvas;
                const { data } = canvas.getContext('2d').getImageData(width / 2 - 10, height / 2 - 10, 20, 20);
                return data.filter((red, i) => i % 4 === 0 && red - data[i + 2] > 60).length;
            });
        assert.equal(await centre(), 0);
        await page.locator('#fewest').fill('1');
        await until(async () => (await centre()) > 10);
        await goTo(page, '#/');
        await page.waitForFunction(() => document.querySelector('.gallery-legend').textContent.includes('1 voxel '));
        await until(speck);
        await page.close();
    });
});
