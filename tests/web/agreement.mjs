// Whether a result of the page and one of the command are the same.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { ZNICA } from '../report/runs.mjs';
import { PYTHON } from './page.mjs';

const COMPARE = fileURLToPath(new URL('compare_results.py', import.meta.url));

/** The sample and its result by the command, with the options that the page sets and seed 1: two folders. */
export function sampleByCommand(scratch) {
    const sample = join(scratch, 'sample');
    const native = join(scratch, 'sample-native');
    const stem = `${sample}/sub-sim_task-blocks_`;
    execFileSync(ZNICA, ['simulate', '--out', sample]);
    const inputs = ['--mask', `${stem}desc-brain_mask.nii.gz`, '--design', `${stem}desc-task_design.tsv`];
    inputs.push('--rois', `${stem}desc-sources_dseg.nii.gz`, '--roi-names', `${stem}desc-sources_dseg.tsv`);
    const settings = ['--components', '9', '--seed', '1', '--threads', '1'];
    execFileSync(ZNICA, ['run', `${stem}bold.nii.gz`, '--out', native, ...inputs, ...settings]);
    return { sample, native };
}

// Smallest |r| between maps, and the largest differences in the tables.
function compared(a, b) {
    return JSON.parse(execFileSync(PYTHON, [COMPARE, a, b], { encoding: 'utf8' }));
}

// One of 156 volumes in another bin changes an entropy by about log2(156) / 156 = 0.05 bits at most, and its exponential,
// rescaled to the range over all components, by about twice as much.
const ONE_VOLUME = 0.1;

/** Asserts that two folders hold the same result up to rounding. */
export function assertAgree(inTab, native) {
    const { smallest_r, tables } = compared(inTab, native);
    assert.ok(smallest_r > 0.9999, `|r| ${smallest_r}`);
    for (const [table, difference] of Object.entries(tables)) {
        const bound = table === 'entropies' ? ONE_VOLUME : 1e-5;
        assert.ok(difference <= bound, `${table}: ${difference}`);
    }
}
