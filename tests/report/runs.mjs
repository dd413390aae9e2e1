// The reports that the tests open: made by the real command from made-up runs or from an actual analysis.
import { execFileSync } from 'node:child_process';
import { existsSync, mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { makeRun, STEM } from './made_up_run.mjs';
import { readNifti } from './nifti.mjs';

export const ZNICA = process.env.ZNICA ?? fileURLToPath(new URL('../../build/release/bin/znica', import.meta.url));
const scratch = mkdtempSync(join(tmpdir(), 'znica-report-runs-'));
process.on('exit', () => rmSync(scratch, { recursive: true, force: true }));

function rows(file) {
    const [header, ...lines] = readFileSync(file, 'utf8')
        .trimEnd()
        .split('\n')
        .map((line) => line.split('\t'));
    return lines.map((line) => Object.fromEntries(header.map((column, i) => [column, line[i]])));
}

function described(folder, stem) {
    const design = `${folder}/${stem}_desc-ICA_design.tsv`;
    return {
        folder,
        report: join(folder, 'report.html'),
        components: () => readNifti(`${folder}/${stem}_desc-ICA_components.nii.gz`),
        metrics: rows(`${folder}/${stem}_desc-ICA_metrics.tsv`),
        mixing: rows(`${folder}/${stem}_desc-ICA_mixing.tsv`),
        design: existsSync(design) ? rows(design) : [],
    };
}

/** A made-up run with its report. */
export function madeUp(name, options) {
    const folder = makeRun(join(scratch, name), options);
    execFileSync(ZNICA, ['report', folder]);
    return described(folder, STEM);
}

/** A simulated sample analysed by the whole command: simulate, run with three repeats, report. */
export function analysed() {
    const sample = join(scratch, 'sample');
    const folder = join(scratch, 'analysed');
    const stem = `${sample}/sub-sim_task-blocks_`;
    execFileSync(ZNICA, ['simulate', '--out', sample, '--size', 'small']);
    execFileSync(ZNICA, [
        'run',
        `${stem}bold.nii.gz`,
        '--mask',
        `${stem}desc-brain_mask.nii.gz`,
        '--components',
        '8',
        '--design',
        `${stem}desc-task_design.tsv`,
        '--rois',
        `${stem}desc-sources_dseg.nii.gz`,
        '--roi-names',
        `${stem}desc-sources_dseg.tsv`,
        '--seed',
        '1',
        '--repeats',
        '3',
        '--out',
        folder,
    ]);
    return described(folder, 'sub-sim_task-blocks');
}
