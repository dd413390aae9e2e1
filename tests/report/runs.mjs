// The reports that the tests open: made by the real command from made-up runs or from an actual analysis.
import { execFileSync } from 'node:child_process';
import { cpSync, existsSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
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

/** A small simulated sample and its analysis, without a report. Made once. */
function tinyAnalysis(components = 6) {
    const [sample, result] = [`tiny-${components}`, `tiny-${components}-result`].map((name) => join(scratch, name));
    const stem = 'sub-sim_task-blocks';
    const bold = `${sample}/${stem}_bold.nii.gz`;
    if (!existsSync(result)) {
        execFileSync(ZNICA, ['simulate', '--out', sample, '--size', 'tiny', '--sources', String(components)]);
        const mask = `${sample}/${stem}_desc-brain_mask.nii.gz`;
        const options = ['--components', String(components), '--seed', '3', '--as-is', '--no-report'];
        execFileSync(ZNICA, ['run', bold, '--mask', mask, ...options, '--out', result]);
    }
    return { stem, bold, result };
}

/** A simulated sample, analysed, with two of its six components removed by labels; confounds with displacement. */
export function denoised() {
    const { stem, bold, result } = tinyAnalysis();
    const folder = join(scratch, 'denoised');
    const labels = join(scratch, 'labels.tsv');
    const lines = ['ICA_01\tnoise\trim <b>of</b> the brain', 'ICA_03\tnoise\tn/a', 'ICA_04\tsignal\ttask'];
    writeFileSync(labels, `component\tclassification\tnote\n${lines.join('\n')}\n`);
    const confounds = join(scratch, 'confounds.tsv');
    const volumes = rows(`${result}/${stem}_desc-ICA_mixing.tsv`).length;
    const shifts = Array.from({ length: volumes }, (_, t) => (t === 0 ? 'n/a' : ((t * t) % 11) / 10));
    writeFileSync(confounds, `framewise_displacement\n${shifts.join('\n')}\n`);
    const shown = ['--confounds', confounds, '--columns', 'none'];
    execFileSync(ZNICA, ['denoise', result, bold, '--labels', labels, ...shown, '--high-pass', '80', '--out', folder]);
    return {
        folder,
        report: join(folder, 'report.html'),
        quality: rows(`${folder}/${stem}_desc-denoise_qc.tsv`),
        parts: rows(`${folder}/${stem}_desc-denoise_components.tsv`),
        volumes: rows(`${folder}/${stem}_desc-denoise_volumes.tsv`),
        carpetBefore: rows(`${folder}/${stem}_desc-denoise_carpetBefore.tsv`),
    };
}

/** The same sample denoised with some options, such as the components to remove. */
export function denoisedBy(name, ...options) {
    const { stem, bold, result } = tinyAnalysis();
    return denoisedResult(result, bold, stem, name, options);
}

/** The same sample with no component rejected. `options`: what else `znica denoise` is to do. */
export function denoisedByNothing(name, ...options) {
    return denoisedBy(name, '--labels', keepsFirst(), ...options);
}

/** A sample of so many components, only the first of which has a label. */
export function hardlyLabelled(components) {
    const { stem, bold, result } = tinyAnalysis(components);
    return denoisedResult(result, bold, stem, `hardly-labelled-${components}`, ['--labels', keepsFirst()]);
}

function keepsFirst() {
    const labels = join(scratch, 'kept.tsv');
    writeFileSync(labels, 'component\tclassification\nICA_00\tsignal\n');
    return labels;
}

/** The same sample with one of two almost equal time courses removed: the variance of most voxels grows manyfold. */
export function grown() {
    const { stem, bold, result } = tinyAnalysis();
    const folder = join(scratch, 'almost-equal');
    cpSync(result, folder, { recursive: true });
    rmSync(`${folder}/${stem}_desc-ICA_timeseries.tsv`);
    const mixing = `${folder}/${stem}_desc-ICA_mixing.tsv`;
    const lines = readFileSync(mixing, 'utf8').trimEnd().split('\n');
    const almost = ([first, second, ...others]) => [first, Number(first) + 0.3 * second, ...others];
    const rewritten = lines.map((line, i) => (i === 0 ? line : almost(line.split('\t')).join('\t')));
    writeFileSync(mixing, `${rewritten.join('\n')}\n`);
    return denoisedResult(folder, bold, stem, 'grown', ['--reject', '2']);
}

function denoisedResult(result, bold, stem, name, options) {
    const folder = join(scratch, name);
    execFileSync(ZNICA, ['denoise', result, bold, ...options, '--out', folder]);
    return {
        report: join(folder, 'report.html'),
        removedVariance: () => readNifti(`${folder}/${stem}_desc-denoise_removedVariance.nii.gz`),
    };
}

/** A group analysis of six simulated subjects, one of which has an outlying amplitude, with its tables and maps. */
export function groupStudy() {
    const [sample, folder] = [join(scratch, 'subjects'), join(scratch, 'group')];
    const names = [1, 2, 3, 4, 5, 6].map((subject) => `sub-0${subject}_task-rest`);
    const images = names.map((name) => `${sample}/${name.slice(0, 6)}/func/${name}_bold.nii.gz`);
    const seed = ['--seed', '2'];
    execFileSync(ZNICA, ['simulate', '--subjects', '6', '--size', 'tiny', '--sources', '4', ...seed, '--out', sample]);
    execFileSync(ZNICA, ['group', 'all', folder, ...images, '--components', '4', '--repeats', '2']);
    return {
        folder,
        names,
        report: join(folder, 'desc-groupICA_report.html'),
        metrics: rows(`${folder}/desc-groupICA_metrics.tsv`),
        amplitudes: rows(`${folder}/desc-groupICA_amplitudes.tsv`),
        correlations: rows(`${folder}/desc-groupICA_netmats.tsv`),
        groupMaps: () => readNifti(`${folder}/desc-groupICA_components.nii.gz`),
        runMaps: (run) => readNifti(`${folder}/dualreg/${run}_desc-dualreg_stat-z_statmap.nii.gz`),
        courses: (run) => rows(`${folder}/dualreg/${run}_desc-dualreg_timeseries.tsv`),
    };
}
