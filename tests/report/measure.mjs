// Prints what a reader gains from the page of a real run: on how many cards the peak of the component can be seen, and
// how long it takes to label 30 components by keyboard.
//
//   node measure.mjs DIR        a folder created by znica run, with its report
import { readdirSync } from 'node:fs';
import { join, resolve } from 'node:path';
import { argv } from 'node:process';
import { test } from 'node:test';
import { browserFor, goTo, openReport } from './browser.mjs';
import { readNifti } from './nifti.mjs';

const folder = resolve(argv[2]);
const maps = readNifti(
    join(
        folder,
        readdirSync(folder).find((name) => name.endsWith('_desc-ICA_components.nii.gz')),
    ),
);
const KEYS = 'snu';

/** The voxel with the largest magnitude. */
function peakOf(component) {
    const [nx, ny, nz] = maps.size;
    let best = [0, 0, 0];
    for (let z = 0; z < nz; ++z) {
        for (let y = 0; y < ny; ++y) {
            for (let x = 0; x < nx; ++x) {
                if (Math.abs(maps.at([x, y, z], component)) > Math.abs(maps.at(best, component))) best = [x, y, z];
            }
        }
    }
    return best;
}

/** Position along each body axis; the grid must be upright, as nearly all are. */
function positionsOf(voxel) {
    return [0, 1, 2].map((row) => {
        const column = [0, 1, 2].reduce((a, b) =>
            Math.abs(maps.affine[row][b]) > Math.abs(maps.affine[row][a]) ? b : a,
        );
        return maps.affine[row][column] < 0 ? maps.size[column] - 1 - voxel[column] : voxel[column];
    });
}

const THROUGH = { sagittal: 0, coronal: 1, axial: 2 };
const browser = browserFor('canvas');

async function peaksSeen(page) {
    await page.waitForTimeout(5000); // all cards are drawn by then
    const cards = await page
        .locator('.card[data-drawn]')
        .evaluateAll((all) =>
            all.map((card) => [card.dataset.component, JSON.parse(card.querySelector('.card-mosaic').dataset.slices)]),
        );
    const seen = cards.filter(([name, slices]) => {
        const peak = positionsOf(peakOf(Number(name.replace('ICA_', ''))));
        return slices.some(({ plane, position }) => peak[THROUGH[plane]] === position);
    });
    return `${seen.length} of ${cards.length} components`;
}

test('cards and labels of a real run', async (t) => {
    const page = await openReport(browser, join(folder, 'report.html'));
    t.diagnostic(`the peak is on a slice of its card: ${await peaksSeen(page)}`);
    await goTo(page, '#/component');
    await page.locator('#fewest').fill('1');
    await goTo(page, '#/');
    await page.locator('.gallery-legend', { hasText: 'at least 1 voxel' }).waitFor();
    t.diagnostic(`with clusters of a single voxel coloured too: ${await peaksSeen(page)}`);

    await page.locator('.card-link').first().click();
    await page.locator('body[data-shown]').waitFor();
    const start = performance.now();
    for (let i = 0; i < 30; ++i) await page.keyboard.press(KEYS[i % KEYS.length], { delay: 30 });
    const text = await page.locator('.component-head .label-progress').textContent();
    t.diagnostic(`30 keys at 30 ms: ${text} in ${((performance.now() - start) / 1000).toFixed(1)} s`);
});
