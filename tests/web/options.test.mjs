// The form: what it passes on, what it disables, and what is said about wrong values and files.
import assert from 'node:assert/strict';
import { execFileSync, spawnSync } from 'node:child_process';
import { writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { before, describe, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { browserFor } from '../report/browser.mjs';
import { ZNICA } from '../report/runs.mjs';
import { assertAgree } from './agreement.mjs';
import { choose, missingPage, openPage, PYTHON, refused, run, scratchFolder, setOptions, unzip } from './page.mjs';

const MAKE_IMAGE = fileURLToPath(new URL('make_image.py', import.meta.url));
const browser = browserFor('canvas');
const scratch = scratchFolder();
const at = (name) => join(scratch, name);
const IMAGE = 'small_bold.nii.gz';
const REGIONS = 'halves_dseg.nii.gz';
const NAMES = 'halves_dseg.tsv';
const CONFOUNDS = 'small_desc-confounds_timeseries.tsv';

before(() => {
    if (missingPage) return;
    execFileSync(PYTHON, [MAKE_IMAGE, 'small', at(IMAGE)]);
    execFileSync(PYTHON, [MAKE_IMAGE, 'regions', at(REGIONS)]);
    writeFileSync(at(NAMES), 'index\tname\n1\tone half\n2\tother half\n');
    const rows = Array.from({ length: 30 }, (_, i) => `${Math.sin(i)}\t${i * i}\t${Math.cos(i / 3)}`);
    writeFileSync(at(CONFOUNDS), `trans_x\ttrans_y\trot_z\n${rows.join('\n')}\n`);
});

// The command in the scratch folder.
function command(out, ...options) {
    const settings = { cwd: scratch, encoding: 'utf8' };
    return spawnSync(ZNICA, ['run', IMAGE, '--out', out, '--threads', '1', '--seed', '1', ...options], settings);
}

function commandSays(...options) {
    const { status, stderr } = command('refused', ...options);
    assert.notEqual(status, 0);
    return stderr
        .trim()
        .replace(/^znica: /, '')
        .replace(/ \(see znica run --help\)$/, '');
}

describe('the options', { skip: missingPage }, () => {
    // Runs these files with these options in the tab and by the command.
    async function assertSameResult(name, files, options, ...equivalent) {
        const page = await openPage(browser);
        await choose(page, [IMAGE, ...files].map(at));
        await setOptions(page, { '--components': 4, '--seed': 1, ...options });
        await run(page);
        const inTab = await unzip(page, scratch);
        assert.deepEqual(page.complaints, []);
        await page.close();
        const { status, stderr } = command(name, '--components', '4', ...equivalent);
        assert.equal(status, 0, stderr);
        assertAgree(inTab, at(name));
    }

    test('are those of the command: regions, confounds, starts', async () => {
        const files = [REGIONS, NAMES, CONFOUNDS];
        const options = { '--columns': 'trans_x,rot_z', '--starts': 5 };
        const inputs = ['--rois', REGIONS, '--roi-names', NAMES, '--confounds', CONFOUNDS];
        await assertSameResult('regions', files, options, ...inputs, '--columns', 'trans_x,rot_z', '--starts', '5');
    });

    test('are those of the command: as the desktop computes it', async () => {
        // What was chosen before does not count.
        const options = { '--smooth': 4, '--scale': 'sd', '--as-is': true };
        await assertSameResult('as-is', [], options, '--as-is');
    });

    test('are disabled where they do not apply', async () => {
        const page = await openPage(browser);
        const enabled = (option) => page.locator(`[id="option${option}"]`).isEnabled();
        await choose(page, [at(IMAGE)]);
        assert.equal(await enabled('--mask'), true);
        assert.equal(await enabled('--columns'), false);
        assert.equal(await enabled('--starts'), true);
        await setOptions(page, { '--approach': 'deflation' });
        assert.equal(await enabled('--starts'), false);
        await setOptions(page, { '--as-is': true });
        for (const option of ['--smooth', '--high-pass', '--scale', '--approach', '--starts']) {
            assert.equal(await enabled(option), false, option);
        }
        await setOptions(page, { '--as-is': false });
        assert.equal(await enabled('--smooth'), true);
        await choose(page, [at(CONFOUNDS)]);
        assert.equal(await enabled('--columns'), true);
        await page.close();
    });
});

describe('wrong options are refused as by the command:', { skip: missingPage }, () => {
    async function assertSameComplaint(files, options, ...equivalent) {
        const page = await openPage(browser);
        await choose(page, [IMAGE, ...files].map(at));
        await setOptions(page, options);
        await page.locator('#run').click();
        await page.locator('.message:not(:empty)').waitFor();
        assert.equal(await page.locator('.message').innerText(), commandSays(...equivalent));
        await page.close();
    }

    test('a column that the confounds lack', async () => {
        const inputs = ['--confounds', CONFOUNDS, '--columns', 'trans_w'];
        await assertSameComplaint([CONFOUNDS], { '--columns': 'trans_w' }, ...inputs);
    });

    test('no random start', async () => {
        await assertSameComplaint([], { '--starts': 0 }, '--starts', '0');
    });

    test('names without regions', async () => {
        const page = await openPage(browser);
        assert.equal(await refused(page, [at(IMAGE), at(NAMES)]), commandSays('--roi-names', NAMES));
        await page.close();
    });

    test('a design without events, before the run', async () => {
        writeFileSync(at('events.tsv'), 'onset\tduration\ttrial_type\n');
        const page = await openPage(browser);
        assert.equal(await refused(page, [at(IMAGE), at('events.tsv')]), commandSays('--design', 'events.tsv'));
        assert.equal(await page.locator('#run').isVisible(), false);
        await page.close();
    });
});
