// `znica report` without a browser.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { existsSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { gunzipSync } from 'node:zlib';
import { STEM } from './made_up_run.mjs';
import { madeUp, ZNICA } from './runs.mjs';

const report = (folder) => spawnSync(ZNICA, ['report', folder], { encoding: 'utf8' });

test('znica report names the file that it made', () => {
    const run = madeUp('named', { components: 2 });
    const done = report(run.folder);
    assert.equal(done.status, 0);
    assert.equal(done.stdout, `${run.report}\n`);
});

test('znica report gives the same page for the same files', () => {
    const run = madeUp('same', { components: 2 });
    const first = readFileSync(run.report);
    report(run.folder);
    assert.ok(first.equals(readFileSync(run.report)));
});

test('znica report refuses a folder without a result', () => {
    const folder = mkdtempSync(join(tmpdir(), 'znica-no-result-'));
    const refused = report(folder);
    assert.equal(refused.status, 3);
    assert.match(
        refused.stderr,
        /^znica: .* has no file that ends in _desc-ICA_components\.nii\.gz; name a folder created by znica run\.\n$/,
    );
    assert.equal(existsSync(join(folder, 'report.html')), false);
    rmSync(folder, { recursive: true });
});

test('znica report refuses a result with a damaged table and leaves the page as it was', () => {
    const run = madeUp('damaged', { components: 2 });
    const before = readFileSync(run.report);
    writeFileSync(`${run.folder}/${STEM}_desc-ICA_decomposition.json`, '{ "GeneratedBy": ');
    const refused = report(run.folder);
    assert.equal(refused.status, 3);
    assert.match(refused.stderr, /decomposition\.json is damaged/);
    assert.ok(before.equals(readFileSync(run.report)));
});

const rowsOf = (text) => text.trimEnd().split('\n');
const joined = (rows) => `${rows.join('\n')}\n`;
const damages = [
    ['metrics.tsv', 'empty', () => '', / is empty\.$/m],
    ['metrics.tsv', 'cut in a row', (text) => text.slice(0, -60), /its row 3 has \d+ cells, but its header has 25/],
    [
        'metrics.tsv',
        'without its last row',
        (text) => joined(rowsOf(text).slice(0, -1)),
        /has 2 rows for 3 component maps/,
    ],
    [
        'metrics.tsv',
        'in another order',
        (text) => joined([0, 2, 1, 3].map((row) => rowsOf(text)[row])),
        /its row 1 is for ICA_01, but the map is ICA_00/,
    ],
    ['metrics.tsv', 'without a column', (text) => text.replace('kurtosis', 'curtosis'), /has no column "kurtosis"/],
    ['metrics.tsv', 'with a word for a number', (text) => text.replace('40.0000', 'most'), /holds "most"/],
    ['mixing.tsv', 'empty', () => '', / is empty\.$/m],
    [
        'mixing.tsv',
        'without a row',
        (text) => joined(rowsOf(text).filter((_, row) => row !== 50)),
        /has 119 rows for 120 volumes/,
    ],
    [
        'mixing.tsv',
        'without a column',
        (text) => joined(rowsOf(text).map((row) => row.replace(/\t[^\t]*$/, ''))),
        /has 2 columns for 3 component maps/,
    ],
    ['mixing.tsv', 'with a word for a number', (text) => text.replace(/\t0\.\d+/, '\tmuch'), /holds "much"/],
    ['design.tsv', 'without a row', (text) => joined(rowsOf(text).slice(0, -1)), /has 119 rows for 120 volumes/],
    [
        'decomposition.json',
        'nested 200,000 levels deep',
        () => '['.repeat(200000) + ']'.repeat(200000),
        /it is nested too deeply/,
    ],
    [
        'decomposition.json',
        'with more volumes than can be counted',
        (text) => text.replace(/"Volumes":\d+/, '"Volumes":1e300'),
        /it has no number of volumes at \/Input\/Volumes/,
    ],
    ['decomposition.json', 'that is a list', () => '[]', /it is not a JSON object/],
    [
        'decomposition.json',
        'without a key',
        (text) => text.replace('"Volumes"', '"Frames"'),
        /no number at \/Input\/Volumes/,
    ],
    [
        'decomposition.json',
        'with a text for a list',
        (text) => text.replace(/"Eigenvalues":\[[^\]]*\]/, '"Eigenvalues":"none"'),
        /no list at \/Eigenvalues/,
    ],
    ['metrics.json', 'that is a list', () => '[]', /it is not a JSON object/],
];

test('znica report refuses files that do not match the maps', () => {
    const run = madeUp('unfit', { components: 3 });
    const before = readFileSync(run.report);
    for (const [name, how, change, said] of damages) {
        const file = `${run.folder}/${STEM}_desc-ICA_${name}`;
        const whole = readFileSync(file, 'utf8');
        const damaged = change(whole);
        assert.notEqual(damaged, whole, `${name} ${how}`);
        writeFileSync(file, damaged);
        const refused = report(run.folder);
        assert.equal(refused.status, 3, `${name} ${how}: ${refused.stderr}`);
        assert.match(refused.stderr, said);
        assert.ok(refused.stderr.includes(file), `${name} ${how}`);
        writeFileSync(file, whole);
    }
    assert.ok(before.equals(readFileSync(run.report)));
});

test('znica report draws over the mask if an older result has no mean image', () => {
    const run = madeUp('older', { components: 2 });
    rmSync(`${run.folder}/${STEM}_desc-mean_bold.nii.gz`);
    assert.equal(report(run.folder).status, 0);
    const block = /data-block="run">([^<]*)</.exec(readFileSync(run.report, 'utf8'))[1];
    assert.equal(JSON.parse(gunzipSync(Buffer.from(block, 'base64'))).has_mean, false);
});
