// A real headless Chromium, with or without WebGL2, that records what a report must not do.
import { existsSync, mkdirSync, mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before } from 'node:test';
import { fileURLToPath } from 'node:url';
import { chromium } from 'playwright-core';

export const CHROMIUM = process.env.CHROMIUM ?? '/usr/bin/chromium';
export const SCREENSHOTS = process.env.REPORT_SCREENSHOTS ?? fileURLToPath(new URL('screenshots', import.meta.url));

/** Why browser tests cannot run here, or false. In CI a missing browser is an error, not a reason to skip. */
export const missingBrowser =
    existsSync(CHROMIUM) || process.env.CI
        ? false
        : `chromium was not found at ${CHROMIUM}; install the package chromium or set CHROMIUM`;

const PATIENCE = 90_000; // milliseconds; a machine that builds the project at the same time is slow

const QUIET = [
    '--no-sandbox',
    '--disable-quic',
    '--no-first-run',
    '--disable-background-networking',
    '--disable-component-update',
    '--disable-sync',
];
// WebGL by software rendering. Composing the whole page with it, too, would double the processor time.
const GRAPHICS = {
    webgl2: ['--use-gl=angle', '--use-angle=swiftshader', '--enable-unsafe-swiftshader', '--disable-gpu-compositing'],
    canvas: ['--disable-gpu', '--disable-3d-apis'],
};

// What Chromium says when it reads back a WebGL canvas to compose the page. When the page itself reads one back, that
// is a complaint; see complainAboutReading.
const COMPOSING = /GPU stall due to ReadPixels( \(this message will no longer repeat\))?$/;

/** The browser of a file or describe block, open during its tests. `renderer`: webgl2 or canvas. */
export function browserFor(renderer) {
    const browser = {};
    before(async () => {
        if (!missingBrowser) Object.assign(browser, await openBrowser(renderer));
    });
    after(() => browser.close?.());
    return browser;
}

// Runs in the page, before its scripts.
function complainAboutReading() {
    const { prototype } = WebGL2RenderingContext;
    const { readPixels } = prototype;
    prototype.readPixels = function read(...where) {
        console.warn('the page reads pixels back from WebGL');
        return readPixels.apply(this, where);
    };
}

// A browser with its own profile.
async function openBrowser(renderer) {
    const profile = mkdtempSync(join(tmpdir(), 'znica-report-'));
    const context = await chromium.launchPersistentContext(profile, {
        executablePath: CHROMIUM,
        headless: true,
        args: [...QUIET, ...GRAPHICS[renderer]],
        viewport: { width: 1440, height: 1000 },
        acceptDownloads: true,
    });
    if (renderer === 'webgl2') await context.addInitScript(complainAboutReading);
    context.setDefaultTimeout(PATIENCE);
    return {
        context,
        async close() {
            await context.close();
            rmSync(profile, { recursive: true, force: true });
        },
    };
}

/**
 * A new page whose `complaints` collect errors and warnings, and whose `requests` all that it asks for. `first` runs in
 * the page before the page's scripts.
 */
export async function watchedPage(browser, settings = {}) {
    const page = await browser.context.newPage();
    page.complaints = [];
    page.requests = [];
    page.on('console', (message) => {
        if (COMPOSING.test(message.text())) return;
        if (message.type() === 'error' || message.type() === 'warning') page.complaints.push(message.text());
    });
    page.on('pageerror', (error) => page.complaints.push(error.stack));
    page.on('request', (request) => page.requests.push(request.url()));
    page.on('websocket', (socket) => page.requests.push(socket.url()));
    if (settings.viewport) await page.setViewportSize(settings.viewport);
    if (settings.first) await page.addInitScript(settings.first);
    await page.emulateMedia({ colorScheme: settings.dark ? 'dark' : 'light' });
    return page;
}

/** Opens a report from disk, at the view `at` instead of the overview, and waits until that or the first card is drawn. */
export async function openReport(browser, file, settings = {}) {
    const page = await watchedPage(browser, settings);
    await page.goto(`file://${file}${settings.at ?? ''}`);
    await page
        .locator(settings.at ? 'body[data-shown]' : '.card[data-drawn]')
        .first()
        .waitFor();
    return page;
}

/** As `first` of `openReport`: a label does not move on to the next component. Not for a test that reloads the page or
 * opens another: Chromium now and then starts an empty storage when it is written to that early. */
export const STAY = "localStorage.setItem('znica-report-advance', 'off')";

/** The same by the switch on the page, which must show a component. */
export async function stay(page) {
    await page.locator('label.switch', { hasText: 'Advance after labelling' }).locator('input').uncheck();
    await page.locator('body').click({ position: { x: 2, y: 2 } }); // keys belong to the page again
}

/** Goes to a view, which may not be drawn yet. */
export function goTo(page, hash) {
    return page.evaluate((next) => {
        location.hash = next;
    }, hash);
}

/** Goes to a component and waits until the final renderer has drawn it. */
export async function showComponent(page, name, renderer) {
    await goTo(page, `#/component/${name}`);
    await page.locator(`body[data-shown="${name}"]`).waitFor();
    await page.locator(`.brain .planes[data-renderer="${renderer}"]:not(.planes-waiting)`).first().waitFor();
}

/** Waits until the promise that `condition` returns resolves to true. */
export async function until(condition) {
    const end = Date.now() + PATIENCE;
    while (!(await condition())) {
        if (Date.now() > end) throw new Error(`never true: ${condition}`);
        await new Promise((done) => setTimeout(done, 50));
    }
}

/** Resolves when the next frame is on the screen. */
export function painted(page) {
    return page.evaluate(() => new Promise((done) => requestAnimationFrame(() => setTimeout(done, 50))));
}

export async function screenshot(page, name) {
    mkdirSync(SCREENSHOTS, { recursive: true });
    await painted(page);
    await page.screenshot({ path: join(SCREENSHOTS, `${name}.png`) });
}

/** What a page has measured under that name so far, in milliseconds. */
export function measures(page, name) {
    return page.evaluate(
        (wanted) => performance.getEntriesByName(wanted, 'measure').map((entry) => Math.round(entry.duration)),
        name,
    );
}
