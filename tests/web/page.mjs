// The page that analyses data, opened from disk in a real Chromium and used as its reader would.
import { execFileSync } from 'node:child_process';
import { existsSync, mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { missingBrowser, watchedPage } from '../report/browser.mjs';

export const PAGE = process.env.ZNICA_PAGE ?? fileURLToPath(new URL('../../build/web/znica.html', import.meta.url));
export const PYTHON = '/usr/bin/python3';

/** Why the tests cannot run here, or false. In CI a missing page is an error, not a reason to skip. */
export const missingPage =
    missingBrowser
    || (existsSync(PAGE) || process.env.CI ? false : `the page was not found at ${PAGE}; scripts/web_build builds it`);

/** A folder that is removed at the end. */
export function scratchFolder() {
    const folder = mkdtempSync(join(tmpdir(), 'znica-web-'));
    process.on('exit', () => rmSync(folder, { recursive: true, force: true }));
    return folder;
}

/** Opens the page and waits until it takes files. `page.complaints` and `page.requests` collect what happens. */
export async function openPage(browser, settings = {}) {
    const page = await watchedPage(browser, settings);
    page.on('dialog', (dialog) => dialog.accept());
    await page.goto(`file://${PAGE}`);
    await page.locator(settings.until ?? '#sample').waitFor();
    return page;
}

/** Chooses files and waits until the run can start. */
export async function choose(page, files) {
    await page.setInputFiles('#picker', files);
    await page.locator('#run:visible').waitFor();
}

/** Chooses files that cannot be analysed and returns what the page says. */
export async function refused(page, files) {
    await page.setInputFiles('#picker', files);
    await page.locator('.message:not(:empty)').waitFor();
    return page.locator('.message').innerText();
}

/** Sets options such as { '--components': 8 }. */
export async function setOptions(page, options) {
    await page.locator('details').evaluate((details) => {
        details.open = true;
    });
    for (const [option, value] of Object.entries(options)) {
        const control = page.locator(`[id="option${option}"]`);
        if ((await control.evaluate(({ tagName }) => tagName)) === 'SELECT') await control.selectOption(String(value));
        else {
            await control.fill(String(value));
            await control.blur(); // from here on it counts as changed
        }
    }
}

/** Runs and waits for the report; returns its frame. */
export async function run(page) {
    await page.locator('#run').click();
    const frame = page.frameLocator('iframe.report');
    await frame.locator('.card[data-drawn]').first().waitFor();
    return frame;
}

/** Waits until no worker is left. */
export async function withoutWorkers(page) {
    while (page.workers().length > 0) await new Promise((done) => setTimeout(done, 20));
}

/** Bytes of the module's memory at the end of the run that is shown. */
export async function heapOf(page) {
    return Number(await page.locator('[data-heap]').getAttribute('data-heap'));
}

/** Saves the result that is shown as a zip and unpacks it into a folder, whose path is returned. */
export async function unzip(page, folder) {
    const waiting = page.waitForEvent('download');
    await page.getByRole('button', { name: 'Everything' }).click();
    const download = await waiting;
    const file = join(folder, 'result.zip');
    await download.saveAs(file);
    execFileSync(PYTHON, ['-m', 'zipfile', '-e', file, folder]);
    rmSync(file);
    return join(folder, download.suggestedFilename().replace(/\.zip$/, ''));
}
