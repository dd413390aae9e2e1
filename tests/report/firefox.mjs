// A real headless Firefox, driven by WebDriver BiDi.
import { existsSync } from 'node:fs';
import puppeteer from 'puppeteer-core';

export const FIREFOX = process.env.FIREFOX ?? '/usr/bin/firefox-esr';

/** Why tests with Firefox cannot run here, or false. */
export const missingFirefox = existsSync(FIREFOX)
    ? false
    : `firefox was not found at ${FIREFOX}; install the package firefox-esr or set FIREFOX`;

/** Opens a Firefox with a profile of its own, which saves what is downloaded in `folder` without asking. */
export function openFirefox(folder) {
    return puppeteer.launch({
        browser: 'firefox',
        executablePath: FIREFOX,
        headless: true,
        timeout: 90_000, // a machine that builds the project at the same time is slow
        defaultViewport: { width: 1440, height: 1000 },
        extraPrefsFirefox: {
            'browser.download.dir': folder,
            'browser.download.folderList': 2,
            'browser.download.alwaysOpenPanel': false,
        },
    });
}

/** A new page whose `complaints` collect errors and warnings. */
export async function watchedFirefoxPage(browser) {
    const page = await browser.newPage();
    page.setDefaultTimeout(90_000);
    page.complaints = [];
    page.on('console', (message) => {
        if (['error', 'warn'].includes(message.type())) page.complaints.push(message.text());
    });
    page.on('pageerror', (error) => page.complaints.push(error.stack));
    return page;
}
