// A real Chromium without a window, with or without WebGL2, that notes what a report must not do.
import { existsSync, mkdirSync, mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { chromium } from 'playwright-core';

export const CHROMIUM = process.env.CHROMIUM ?? '/usr/bin/chromium';
export const SCREENSHOTS = process.env.REPORT_SCREENSHOTS ?? fileURLToPath(new URL('screenshots', import.meta.url));

/** Why no browser test can run here, or false. In CI a missing browser is an error, not a reason. */
export const missingBrowser =
    existsSync(CHROMIUM) || process.env.CI
        ? false
        : `chromium was not found at ${CHROMIUM}; install the package chromium or set CHROMIUM`;

const QUIET = [
    '--no-sandbox',
    '--disable-quic',
    '--no-first-run',
    '--disable-background-networking',
    '--disable-component-update',
    '--disable-sync',
];
const GRAPHICS = {
    webgl2: ['--use-gl=angle', '--use-angle=swiftshader', '--enable-unsafe-swiftshader'], // software rendering
    canvas: ['--disable-gpu', '--disable-3d-apis'],
};

/** A browser with a profile of its own. `renderer`: webgl2 or canvas. */
export async function openBrowser(renderer) {
    const profile = mkdtempSync(join(tmpdir(), 'znica-report-'));
    const context = await chromium.launchPersistentContext(profile, {
        executablePath: CHROMIUM,
        headless: true,
        args: [...QUIET, ...GRAPHICS[renderer]],
        viewport: { width: 1440, height: 1000 },
        acceptDownloads: true,
    });
    context.setDefaultTimeout(90_000); // machines that build the project may be busy with it
    return {
        context,
        async close() {
            await context.close();
            rmSync(profile, { recursive: true, force: true });
        },
    };
}

/**
 * Opens a report from disk, `at` a view if not the overview, and waits until that or the cards in sight are drawn.
 * `first` runs in the page before its own scripts. `page.complaints` collects what went wrong.
 */
export async function openReport(browser, file, settings = {}) {
    const page = await browser.context.newPage();
    page.complaints = [];
    page.requests = [];
    page.on('console', (message) => {
        if (message.type() === 'error' || message.type() === 'warning') page.complaints.push(message.text());
    });
    page.on('pageerror', (error) => page.complaints.push(error.stack));
    page.on('request', (request) => page.requests.push(request.url()));
    page.on('websocket', (socket) => page.requests.push(socket.url()));
    if (settings.viewport) await page.setViewportSize(settings.viewport);
    if (settings.first) await page.addInitScript(settings.first);
    await page.emulateMedia({ colorScheme: settings.dark ? 'dark' : 'light' });
    await page.goto(`file://${file}${settings.at ?? ''}`);
    await page
        .locator(settings.at ? 'body[data-shown]' : '.card[data-drawn]')
        .first()
        .waitFor();
    return page;
}

/** Goes to a component and waits until it is drawn, by the final renderer. */
export async function showComponent(page, name, renderer) {
    await page.evaluate((hash) => {
        location.hash = hash;
    }, `#/component/${name}`);
    await page.locator(`body[data-shown="${name}"]`).waitFor();
    await page.locator(`.brain .planes[data-renderer="${renderer}"]:not(.planes-waiting)`).first().waitFor();
}

/** The next picture is on the screen. */
export function painted(page) {
    return page.evaluate(() => new Promise((done) => requestAnimationFrame(() => setTimeout(done, 50))));
}

export async function screenshot(page, name) {
    mkdirSync(SCREENSHOTS, { recursive: true });
    await painted(page);
    await page.screenshot({ path: join(SCREENSHOTS, `${name}.png`) });
}

/** What a page measured by that name so far, in milliseconds. */
export function measures(page, name) {
    return page.evaluate(
        (wanted) => performance.getEntriesByName(wanted, 'measure').map((entry) => Math.round(entry.duration)),
        name,
    );
}
