// Whole runs in the tab, compared with the truth and with the command.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { copyFileSync, existsSync, mkdirSync } from 'node:fs';
import { join } from 'node:path';
import { before, describe, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { browserFor, screenshot } from '../report/browser.mjs';
import { ZNICA } from '../report/runs.mjs';
import { choose, missingPage, openPage, PYTHON, run, scratchFolder, setOptions, unzip } from './page.mjs';

const MEASURED = process.env.MEASURED_DATA_FOLDER ?? '';
const COMPARE = fileURLToPath(new URL('compare_results.py', import.meta.url));
const browser = browserFor('canvas');
const scratch = scratchFolder();

function fresh(name) {
    const folder = join(scratch, name);
    mkdirSync(folder);
    return folder;
}

function compared(a, b) {
    return JSON.parse(execFileSync(PYTHON, [COMPARE, a, b], { encoding: 'utf8' }));
}

function assertAgree(inTab, native) {
    const { smallest_r, tables } = compared(inTab, native);
    assert.ok(smallest_r > 0.9999, `|r| ${smallest_r}`);
    for (const [table, difference] of Object.entries(tables)) assert.ok(difference <= 1e-5, `${table}: ${difference}`);
}

// The |r| that `znica score` prints for each source.
function scores(truth, result) {
    const text = execFileSync(ZNICA, ['score', '--truth', truth, result], { encoding: 'utf8' });
    return [...text.matchAll(/\b[01]\.\d+\b/g)].map(([number]) => Number(number));
}

describe('a run in the tab', { skip: missingPage }, () => {
    test('finds the sources of the sample as well as the command does', async () => {
        const page = await openPage(browser);
        await page.locator('#sample').click();
        await page.locator('#run:visible').waitFor();
        await screenshot(page, 'web-input');
        await setOptions(page, { '--seed': 1 });
        await run(page);
        await screenshot(page, 'web-result');
        const result = await unzip(page, fresh('sample-in-tab'));
        assert.deepEqual(page.complaints, []);
        await page.close();

        const sample = join(scratch, 'sample');
        const native = join(scratch, 'sample-native');
        const stem = `${sample}/sub-sim_task-blocks_`;
        execFileSync(ZNICA, ['simulate', '--out', sample]);
        const inputs = ['--mask', `${stem}desc-brain_mask.nii.gz`, '--design', `${stem}desc-task_design.tsv`];
        const settings = ['--components', '9', '--seed', '1', '--threads', '1'];
        execFileSync(ZNICA, ['run', `${stem}bold.nii.gz`, '--out', native, ...inputs, ...settings]);
        const [inTab, expected] = [scores(sample, result), scores(sample, native)];
        assert.ok(inTab.length >= 8, 'one |r| per source');
        assert.deepEqual(inTab, expected);
        assertAgree(result, native);
    });
});

const noData = existsSync(MEASURED) ? false : `the measured data were not found at ${MEASURED}`;

describe('a run on measured data in the tab', { skip: missingPage || noData }, () => {
    const names = ['oneback_small_bold.nii.gz', 'oneback_small_mask.nii.gz'];
    let folder;

    before(() => {
        folder = fresh('measured');
        for (const name of names) copyFileSync(join(MEASURED, name), join(folder, name));
    });

    async function bothRuns(name, options, files) {
        const page = await openPage(browser);
        await choose(
            page,
            files.map((file) => join(folder, file)),
        );
        await setOptions(page, { ...options, '--seed': 1 });
        await run(page);
        const inTab = await unzip(page, fresh(`${name}-in-tab`));
        assert.deepEqual(page.complaints, []);
        await page.close();
        const native = join(scratch, `${name}-native`);
        const settings = Object.entries(options).flatMap(([option, value]) => [option, String(value)]);
        const mask = files[1] ? ['--mask', files[1]] : [];
        const threads = ['--seed', '1', '--threads', '1'];
        execFileSync(ZNICA, ['run', names[0], '--out', native, ...mask, ...settings, ...threads], { cwd: folder });
        assertAgree(inTab, native);
    }

    test('agrees with the command: symmetric, with a mask', async () => {
        await bothRuns('symmetric', { '--components': 10 }, names);
    });

    test('agrees with the command: deflation, without a mask, filtered and scaled', async () => {
        const options = { '--components': 6, '--approach': 'deflation', '--high-pass': 128, '--scale': 'percent' };
        await bothRuns('deflation', options, names.slice(0, 1));
    });

    test('agrees with the command: number of components estimated', async () => {
        await bothRuns('estimated', { '--components': 'auto' }, names);
    });
});
