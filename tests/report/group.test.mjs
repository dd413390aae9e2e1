// The page of a group analysis, made by the real command from simulated subjects.
import assert from 'node:assert/strict';
import { execFileSync, spawnSync } from 'node:child_process';
import { cpSync, existsSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { before, describe, test } from 'node:test';
import { gunzipSync, gzipSync } from 'node:zlib';
import { browserFor, goTo, missingBrowser, painted, screenshot, watchedPage } from './browser.mjs';
import { cutOff } from './cut_off.mjs';
import { chartData, numberOf } from './page_contents.mjs';
import { groupStudy, ZNICA } from './runs.mjs';

let study;
before(() => {
    if (!missingBrowser) study = groupStudy();
});

async function open(browser, at = '', settings = {}) {
    const page = await watchedPage(browser, settings);
    await page.goto(`file://${study.report}${at}`);
    await page.locator('body[data-shown]').waitFor();
    return page;
}

/** Goes to a component in a run and waits until both maps are drawn. */
async function openRun(browser, component, run, settings) {
    const page = await open(browser, `#/component/${component}/${run}`, settings);
    await page.locator('.brain:nth-child(2) .colour-bar').waitFor();
    return page;
}

/** The page as it is when the maps of a run were left out. */
function withoutMaps(run) {
    const html = readFileSync(study.report, 'utf8').replace(/(data-block="group">)([^<]+)/, (_, start, block) => {
        const group = JSON.parse(gunzipSync(Buffer.from(block, 'base64')));
        group.runs.find(({ name }) => name === run).map_steps = null;
        return start + gzipSync(JSON.stringify(group)).toString('base64');
    });
    const file = join(study.folder, 'without.html');
    writeFileSync(file, html);
    return file;
}

const shown = (page) => page.locator('body').getAttribute('data-shown');
const readouts = (page, field) => page.locator(`[data-readout="${field}"]`).allTextContents();
const focused = (page, attribute) => page.evaluate((name) => document.activeElement.getAttribute(name), attribute);

describe('the page of a group analysis', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');

    test('opens with the components, their stability and their amplitude', async () => {
        const page = await open(browser);
        await page.locator('.card[data-drawn]').nth(3).waitFor();
        assert.equal(await page.locator('.card').count(), 4);
        for (const { component, stability_iq } of study.metrics) {
            const foot = await page.locator(`.card[data-component=${component}] .card-foot`).textContent();
            const [, shown] = /stability ([0-9.]+)/.exec(foot);
            assert.ok(Math.abs(shown - stability_iq) < 1.001e-3, foot);
            assert.equal(shown === '1', Number(stability_iq) === 1);
        }
        await screenshot(page, 'group-components');
        await page.close();
    });

    test('fetches nothing and complains about nothing', async () => {
        const page = await open(browser);
        for (const part of ['component', 'amplitudes', 'correlations', 'methods']) {
            await goTo(page, `#/${part}`);
            await page.locator('main.view').waitFor();
            await painted(page);
        }
        assert.deepEqual(page.complaints, []);
        assert.deepEqual(
            page.requests.filter((url) => !/^(file|data|blob):/.test(url)),
            [],
        );
        await page.close();
    });

    test('shows the amplitudes of the table as dots', async () => {
        const page = await open(browser, '#/amplitudes');
        for (const row of study.amplitudes) {
            for (const { component } of study.metrics) {
                const dot = page.locator(`.dot-row[data-component=${component}] .dot[data-run="${row.run}"]`);
                const label = await dot.getAttribute('aria-label');
                assert.ok(label.startsWith(`${row.run}: ${Number(row[component]).toPrecision(3)} %`), label);
                assert.equal(label.endsWith('an outlier'), row.outliers.split(',').includes(component), label);
            }
        }
        await page.close();
    });

    test('marks the outlying run and names it', async () => {
        const page = await open(browser, '#/amplitudes');
        const outlying = study.amplitudes.filter(({ outliers }) => outliers !== 'n/a');
        assert.ok(outlying.length > 0, 'the sample has an outlier');
        const marked = await page.locator('.dot-outlier').evaluateAll((dots) => dots.map(({ dataset }) => dataset.run));
        assert.deepEqual(new Set(marked), new Set(outlying.map(({ run }) => run)));
        const names = await page.locator('.dot-outliers a').allTextContents();
        assert.deepEqual(new Set(names), new Set(outlying.map(({ run }) => `\u25c6 ${run}`)));
        await screenshot(page, 'group-amplitudes');
        await page.close();
    });

    test('names a dot under the pointer', async () => {
        const page = await open(browser, '#/amplitudes');
        const dot = page.locator('.dot-row[data-component=ICA_01] .dot').first();
        await dot.hover();
        assert.equal(await page.locator('.dot-hint').textContent(), await dot.getAttribute('aria-label'));
        await page.close();
    });

    test('goes from dot to dot by keyboard and opens the run', async () => {
        const page = await open(browser, '#/amplitudes');
        await page.locator('.dot-title').first().focus();
        await page.keyboard.press('Tab');
        const order = [...study.amplitudes].sort((a, b) => a.ICA_00 - b.ICA_00).map(({ run }) => run);
        assert.equal(await focused(page, 'data-run'), order[0]);
        await page.keyboard.press('ArrowRight');
        await page.keyboard.press('ArrowRight');
        assert.equal(await focused(page, 'data-run'), order[2]);
        assert.match(await page.locator('.dot-hint').textContent(), new RegExp(`^${order[2]}: `));
        await page.keyboard.press('Enter');
        await page.locator(`body[data-shown="ICA_00 ${order[2]}"]`).waitFor();
        await page.close();
    });

    test('gives the correlations of the table, with the signs of the maps', async () => {
        const page = await open(browser, '#/correlations');
        for (const { a, b, mean_r, sd_z } of study.correlations) {
            const cell = page.locator(`td[data-pair="${b} ${a}"]`); // below the diagonal
            await cell.hover();
            const text = await page.locator('.matrix-readout').textContent();
            const [mean, spread] = [...text.matchAll(/(?:mean r|spread) ([\u2212.\d]+)/g)].map(([, n]) => numberOf(n));
            assert.ok(Math.abs(Math.abs(mean) - Math.abs(mean_r)) <= 0.00051, `${text}, ${mean_r}`);
            assert.ok(Math.abs(spread - sd_z) <= 0.00051, `${text}, ${sd_z}`);
        }
        await screenshot(page, 'group-correlations');
        await page.close();
    });

    test('inverts the correlations of a component that is flipped', async () => {
        const page = await openRun(browser, 'ICA_02', study.names[0]);
        const mean = async () => {
            await goTo(page, '#/correlations');
            return numberOf(await page.locator('td[data-pair="ICA_02 ICA_00"]').textContent());
        };
        const first = await mean();
        await goTo(page, '#/component');
        await page.locator(`body[data-shown="ICA_02 ${study.names[0]}"]`).waitFor();
        await page.keyboard.press('f');
        assert.notEqual(first, 0);
        assert.equal(await mean(), -first);
        await page.close();
    });

    test('goes from cell to cell by keyboard', async () => {
        const page = await open(browser, '#/correlations');
        await page.locator('td[tabindex="0"]').focus();
        assert.equal(await focused(page, 'data-pair'), 'ICA_01 ICA_00');
        await page.keyboard.press('ArrowDown');
        await page.keyboard.press('ArrowDown');
        await page.keyboard.press('ArrowRight');
        assert.equal(await focused(page, 'data-pair'), 'ICA_03 ICA_01');
        assert.match(await page.locator('.matrix-readout').textContent(), /^IC 2 and IC 4: /);
        await page.close();
    });

    test('shows the map of a run beside that of the group, at one voxel', async () => {
        const page = await openRun(browser, 'ICA_02', study.names[1]);
        const [own, other] = await readouts(page, 'voxel');
        assert.equal(own, other);
        const voxel = own.split(', ').map(Number);
        const [group, run] = (await readouts(page, 'value')).map(numberOf);
        const sign = (await page.locator('.brain').first().getAttribute('data-flipped')) === 'true' ? -1 : 1;
        assert.ok(Math.abs(sign * group - study.groupMaps().at(voxel, 2)) <= 0.00051);
        const exact = study.runMaps(study.names[1]).at(voxel, 2);
        assert.ok(Math.abs(sign * run - exact) <= 0.005 * Math.abs(exact) + 0.11, `${run}, ${exact}`);
        await screenshot(page, 'group-run');
        await page.close();
    });

    test('steps through components and runs by keyboard', async () => {
        const page = await openRun(browser, 'ICA_00', study.names[0]);
        const goes = async (key, to) => {
            await page.keyboard.press(key);
            await page.locator(`body[data-shown="${to}"]`).waitFor();
        };
        await goes('j', `ICA_00 ${study.names[1]}`);
        await goes('ArrowRight', `ICA_01 ${study.names[1]}`);
        await goes('k', `ICA_01 ${study.names[0]}`);
        await goes('k', `ICA_01 ${study.names.at(-1)}`);
        const address = `#/component/ICA_01/${study.names.at(-1)}`;
        await page.waitForFunction((hash) => location.hash === hash, address); // follows with a delay
        await page.keyboard.press('Escape');
        await page.locator('body[data-shown=components]').waitFor();
        await page.close();
    });

    test('keeps the crosshair when another run is chosen', async () => {
        const page = await openRun(browser, 'ICA_00', study.names[0]);
        await page.keyboard.press('ArrowUp');
        const [before_] = await readouts(page, 'voxel');
        await page.locator('select[aria-label="The run shown"]').selectOption({ index: 2 });
        await page.locator(`body[data-shown="ICA_00 ${study.names[2]}"]`).waitFor();
        assert.deepEqual(await readouts(page, 'voxel'), [before_, before_]);
        await page.close();
    });

    test('draws the course of the table', async () => {
        const page = await openRun(browser, 'ICA_01', study.names[2]);
        const sign = (await page.locator('.brain').first().getAttribute('data-flipped')) === 'true' ? -1 : 1;
        const { datasets } = await chartData(page, 'course');
        const held = study.courses(study.names[2]);
        assert.equal(datasets[0].data.length, held.length);
        held.forEach((row, t) => {
            assert.ok(Math.abs(sign * datasets[0].data[t].y - row.ICA_01) <= 0.00051);
        });
        await page.close();
    });

    test('flips group, run and course together', async () => {
        const page = await openRun(browser, 'ICA_00', study.names[0]);
        const values = async () => (await readouts(page, 'value')).map(numberOf);
        const first = async () => (await chartData(page, 'course')).datasets[0].data[0].y;
        const [maps, course] = [await values(), await first()];
        await page.keyboard.press('f');
        await page.waitForFunction(
            (y) => document.querySelector('.chart-course canvas').chart.data.datasets[0].data[0].y !== y,
            course,
        );
        assert.deepEqual(
            await values(),
            maps.map((value) => -value),
        );
        assert.equal(await first(), -course);
        await page.close();
    });

    test('says which maps did not fit and where they are', async () => {
        const page = await watchedPage(browser);
        await page.goto(`file://${withoutMaps(study.names[0])}#/component/ICA_00/${study.names[0]}`);
        await page.locator(`body[data-shown="ICA_00 ${study.names[0]}"]`).waitFor();
        const file = `dualreg/${study.names[0]}_desc-dualreg_stat-z_statmap.nii.gz`;
        assert.ok(
            (await page.locator('.run-missing').textContent()).includes(`did not fit into this page; open ${file} `),
        );
        assert.equal(await page.locator('.brain:visible').count(), 1);
        await goTo(page, '#/');
        assert.match(await page.locator('.group-facts .notes').textContent(), /maps of 5 of 6 runs/);
        await page.close();
    });

    test('describes the methods with the numbers of the study', async () => {
        const page = await open(browser, '#/methods');
        const text = await page.locator('#methods-text').textContent();
        for (const part of ['on 6 runs of', 'Smith et al., 2014', 'Nickerson et al., 2017', 'the 4 leading ones']) {
            assert.ok(text.includes(part), `${part}: ${text}`);
        }
        await page.close();
    });

    test('fades the right edge of the correlations where the window is too narrow for them', async () => {
        const page = await open(browser, '#/correlations', { viewport: { width: 320, height: 800 } });
        const box = page.locator('.group-correlations .table-scroll');
        await page.locator('.table-scroll[data-more-right]').waitFor();
        await screenshot(page, 'group-correlations-narrow');
        await box.evaluate((element) => element.scrollTo(element.scrollWidth, 0));
        await page.locator('.table-scroll:not([data-more-right])').waitFor();
        await box.evaluate((element) => element.scrollTo(0, 0));
        await page.locator('.table-scroll[data-more-right]').waitFor();
        await page.setViewportSize({ width: 1000, height: 800 });
        await page.locator('.table-scroll:not([data-more-right])').waitFor();
        await page.close();
    });

    for (const width of [390, 320]) {
        test(`sticks out nowhere in a window of ${width} pixels`, async () => {
            const page = await open(browser, '', { viewport: { width, height: 800 }, dark: true });
            for (const part of ['', `component/ICA_00/${study.names[0]}`, 'amplitudes', 'correlations', 'methods']) {
                await goTo(page, `#/${part}`);
                await page.locator('main.view').waitFor();
                await painted(page);
                assert.deepEqual(await cutOff(page), [], part);
            }
            await page.close();
        });
    }
});

test('the step without the template of the page writes the tables and says so', { skip: missingBrowser }, () => {
    const bare = join(study.folder, 'bare', 'bin');
    cpSync(dirname(ZNICA), bare, { recursive: true }); // without share/ beside it
    rmSync(study.report);
    rmSync(join(study.folder, 'desc-groupICA_netmats.tsv'));
    const { status, stderr } = spawnSync(join(bare, 'znica'), ['group', 'report', study.folder, '--force']);
    assert.equal(
        stderr.toString(),
        'znica: no desc-groupICA_report.html was written because its template is not installed.\n',
    );
    assert.equal(status, 0);
    assert.ok(existsSync(join(study.folder, 'desc-groupICA_netmats.tsv')));
    execFileSync(ZNICA, ['group', 'report', study.folder]);
    assert.ok(existsSync(study.report), 'written by the next command that has the template');
});

describe('the page of a group analysis with WebGL2', { skip: missingBrowser }, () => {
    const browser = browserFor('webgl2');

    test('draws both maps with the renderer of the other pages', async () => {
        const page = await openRun(browser, 'ICA_00', study.names[0], { dark: true });
        const drawn = page.locator('.brain .planes[data-renderer=webgl2]:not(.planes-waiting)');
        await drawn.nth(1).waitFor();
        assert.equal(await shown(page), `ICA_00 ${study.names[0]}`);
        assert.deepEqual(
            page.complaints.filter((text) => !/GPU stall|GL Driver/.test(text)),
            [],
        );
        await screenshot(page, 'group-run-webgl2-dark');
        await page.close();
    });
});
