// Whole runs in a real Firefox, compared with the command.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { existsSync, mkdirSync, statSync } from 'node:fs';
import { join } from 'node:path';
import { after, before, describe, test } from 'node:test';
import { missingFirefox, openFirefox, watchedFirefoxPage } from '../report/firefox.mjs';
import { ZNICA } from '../report/runs.mjs';
import { assertAgree, sampleByCommand } from './agreement.mjs';
import { missingPage, PAGE, scratchFolder, unpacked } from './page.mjs';

const MEASURED = process.env.MEASURED_DATA_FOLDER ?? '';
const noData = existsSync(MEASURED) ? false : `the measured data were not found at ${MEASURED}`;
const scratch = scratchFolder();
const downloads = join(scratch, 'downloads');
let browser;

before(async () => {
    if (missingFirefox || missingPage) return;
    mkdirSync(downloads);
    browser = await openFirefox(downloads);
});
after(() => browser?.close());

async function openPage() {
    const page = await watchedFirefoxPage(browser);
    await page.goto(`file://${PAGE}`);
    await page.waitForSelector('#sample');
    return page;
}

async function setOption(page, option, value) {
    await page.$eval(
        `[id="option${option}"]`,
        (input, text) => {
            input.value = text;
            input.dispatchEvent(new Event('change'));
        },
        String(value),
    );
}

// A download is empty at first and has a part beside it until it is complete.
async function whole(file) {
    const complete = () => existsSync(file) && statSync(file).size > 0 && !existsSync(`${file}.part`);
    while (!complete()) await new Promise((done) => setTimeout(done, 50));
    return file;
}

// Runs, waits for the report and saves everything; returns the folder of the result, whose name is `stem`.
async function run(page, stem) {
    await page.waitForSelector('#run', { visible: true });
    await setOption(page, '--seed', 1);
    await page.click('#run');
    const frame = await (await page.waitForSelector('iframe.report')).contentFrame();
    await frame.waitForSelector('.card[data-drawn]');
    await (await page.waitForSelector('::-p-text(Everything)')).click();
    const zip = await whole(join(downloads, `${stem}.zip`));
    assert.deepEqual(page.complaints, []);
    await page.close();
    return unpacked(zip);
}

describe('in Firefox, a run', { skip: missingFirefox || missingPage }, () => {
    test('of the sample agrees with the command', async () => {
        const page = await openPage();
        await page.click('#sample');
        const inTab = await run(page, 'sub-sim_task-blocks');
        assertAgree(inTab, sampleByCommand(scratch).native);
    });

    test('of measured data agrees with the command', { skip: noData }, async () => {
        const [image, mask] = ['oneback_small_bold.nii.gz', 'oneback_small_mask.nii.gz'].map((name) =>
            join(MEASURED, name),
        );
        const page = await openPage();
        await (await page.$('#picker')).uploadFile(image, mask);
        await setOption(page, '--components', 10);
        const inTab = await run(page, 'oneback_small');
        const native = join(scratch, 'native');
        const settings = ['--components', '10', '--seed', '1', '--threads', '1'];
        execFileSync(ZNICA, ['run', image, '--mask', mask, '--out', native, ...settings]);
        assertAgree(inTab, native);
    });
});
