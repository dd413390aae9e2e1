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
    assert.match(refused.stderr, /^znica: .* holds no result of znica run .*; check the folder\.\n$/);
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

test('znica report draws over the mask where an older result has no mean image', () => {
    const run = madeUp('older', { components: 2 });
    rmSync(`${run.folder}/${STEM}_desc-mean_bold.nii.gz`);
    assert.equal(report(run.folder).status, 0);
    const block = /data-block="run">([^<]*)</.exec(readFileSync(run.report, 'utf8'))[1];
    assert.equal(JSON.parse(gunzipSync(Buffer.from(block, 'base64'))).has_mean, false);
});
