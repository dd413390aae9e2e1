// The contents of a page as a reader sees them, and their comparison with the files of the run.
import assert from 'node:assert/strict';

export const CHART = (name) => `.chart-${name} canvas`;

/** Component names in the order of the cards. */
export const cardNames = (page) =>
    page.locator('.card').evaluateAll((cards) => cards.map((card) => card.dataset.component));
export const readout = async (page, field) =>
    (await page.locator(`[data-readout="${field}"]`).first().textContent()).trim();
export const numberOf = (text) => Number(text.replace('\u2212', '-'));
export const chartData = (page, name) =>
    page.locator(CHART(name)).evaluate((canvas) =>
        JSON.parse(
            JSON.stringify({
                labels: canvas.chart.data.labels,
                datasets: canvas.chart.data.datasets.map(({ label, data }) => ({ label, data })),
            }),
        ),
    );

/** Whether the first map is shown with the opposite sign of the files. */
export const isFlipped = async (page) => (await page.locator('.brain').first().getAttribute('data-flipped')) === 'true';

/** Compares the crosshair's voxel, position and value with the files. */
export async function checkCrosshair(page, run, component) {
    const map = run.components();
    const voxel = (await readout(page, 'voxel')).split(', ').map(Number);
    const shown = await readout(page, 'value');
    const held = map.at(voxel, component) * ((await isFlipped(page)) ? -1 : 1);
    if (shown === 'outside the mask') {
        assert.equal(held, 0, `voxel ${voxel} is outside`);
    } else {
        const decimals = shown.split('.')[1].length;
        assert.ok(decimals >= 2, `at least two decimals in ${shown}`);
        // half a unit of the last digit shown, and the rounding of the float itself
        assert.ok(Math.abs(numberOf(shown) - held) <= 0.5 * 10 ** -decimals + 1e-6, `${shown} for ${held} at ${voxel}`);
    }
    const mm = map.affine.map((row) => row[0] * voxel[0] + row[1] * voxel[1] + row[2] * voxel[2] + row[3]);
    const position = (await readout(page, 'mm')).match(/[-\u2212]?\d+\.\d/g).map(numberOf);
    position.forEach((value, axis) => assert.ok(Math.abs(value - mm[axis]) <= 0.0501, `${position} for ${mm}`));
    return { voxel, mm, held };
}
