// The page over all runs of a study, made by the real command from made-up records.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { existsSync, mkdirSync, mkdtempSync, readFileSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, describe, test } from 'node:test';
import { browserFor, missingBrowser, screenshot } from './browser.mjs';
import { ZNICA } from './runs.mjs';

const folder = mkdtempSync(join(tmpdir(), 'znica-study-'));
after(() => rmSync(folder, { recursive: true, force: true }));

/** A record as the command writes it. `i`: number of the run, from 1. */
function record(i, changes = {}) {
    const name = `sub-${String(i).padStart(4, '0')}_task-rest`;
    const pixels = Array.from(
        { length: 132 * 44 },
        (_, p) => 'abcdefghijklmnopq'[(p * 7 + i * 3 + (p % 13) ** 2) % 17],
    );
    return {
        Run: name,
        ExitStatus: 0,
        Message: '',
        Seconds: 100 + (i % 7),
        PeakMemoryBytes: 1048576 * (500 + (i % 5)),
        ComponentsAsked: 20,
        ComponentsFound: 20,
        Voxels: 60000 + 100 * (i % 11),
        Volumes: 200,
        RepetitionTime: 2,
        VariancePercent: 80 + (i % 4),
        Stability: null,
        Notes: [],
        Thumbnail: { Width: 132, Height: 44, Pixels: pixels.join('') },
        Files: [`${name}.html`],
        ...changes,
    };
}

/** Writes a study's records and its page; returns the page. */
function study(name, records) {
    const out = join(folder, name);
    mkdirSync(join(out, 'logs'), { recursive: true });
    mkdirSync(join(out, 'logs', 'denoise'), { recursive: true });
    for (const { Denoised, ...r } of records) {
        writeFileSync(join(out, 'logs', `${r.Run}.json`), JSON.stringify(r));
        if (Denoised) writeFileSync(join(out, 'logs', 'denoise', `${r.Run}.json`), JSON.stringify(Denoised));
    }
    execFileSync(ZNICA, ['bids', 'nowhere', out, 'group']);
    return join(out, 'index.html');
}

/** The record of a denoised run. */
function denoised(i, changes = {}) {
    const measure = (before, after) => ({ Before: before, After: after });
    return {
        ExitStatus: 0,
        Message: '',
        Method: 'nonaggr',
        Notes: [],
        Quality: {
            dvars_median: measure(8.19 + 0.1 * i, 5.11 + 0.1 * i),
            tsnr_median: measure(68.9 + i, 105.1 + i),
            framewise_displacement_mean: measure(0.12 + 0.01 * i, 0.12 + 0.01 * i),
            dvars_fd_correlation: measure(0.61, 0.18),
            degrees_of_freedom: measure(199, 180),
        },
        Files: [`sub-${String(i).padStart(4, '0')}_task-rest_denoised.html`],
        ...changes,
    };
}

const DAMAGED = {
    ExitStatus: 3,
    Message: 'x.nii.gz is truncated or damaged.',
    Voxels: null,
    Files: [],
    Thumbnail: null,
};

async function open(browser, file) {
    const page = await browser.context.newPage();
    page.complaints = [];
    page.requests = [];
    page.on('console', (message) => page.complaints.push(message.text()));
    page.on('pageerror', (error) => page.complaints.push(error.stack));
    page.on('request', (request) => page.requests.push(request.url()));
    await page.goto(`file://${file}`);
    await page.locator('body[data-shown]').waitFor();
    return page;
}

const names = (page) => page.locator('tbody tr:visible').evaluateAll((rows) => rows.map((row) => row.dataset.run));

describe('a study of twelve runs', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');
    let page;
    before(async () => {
        const records = Array.from({ length: 12 }, (_, k) => record(k + 1));
        records[3] = record(4, DAMAGED);
        records[8] = record(9, { ExitStatus: 4, ComponentsFound: 12, Message: '12 of 20 components found.' });
        records[10] = record(11, { Voxels: 90000 });
        page = await open(browser, study('twelve', records));
    });

    test('shows failures first, then outliers', async () => {
        const shown = await names(page);
        assert.equal(shown.length, 12);
        assert.deepEqual(shown.slice(0, 4), [
            'sub-0004_task-rest',
            'sub-0009_task-rest',
            'sub-0011_task-rest',
            'sub-0001_task-rest',
        ]);
        await screenshot(page, 'study-twelve');
    });

    test('says why a run has no result, and links to the others', async () => {
        const failed = page.locator('tr[data-run="sub-0004_task-rest"]');
        assert.match(await failed.textContent(), /truncated or damaged/);
        assert.equal(await failed.locator('.run-name a').first().getAttribute('href'), 'logs/sub-0004_task-rest.log');
        const done = page.locator('tr[data-run="sub-0001_task-rest"] .run-name a').first();
        assert.equal(await done.getAttribute('href'), 'sub-0001_task-rest.html');
    });

    test('marks outliers', async () => {
        const cells = page.locator('tr[data-run="sub-0011_task-rest"] .outlying');
        assert.deepEqual(await cells.allTextContents(), ['90,000']);
        assert.equal(await page.locator('tr[data-run="sub-0001_task-rest"] .outlying').count(), 0);
    });

    test('sorts by a column, either way', async () => {
        const head = page.locator('th button', { hasText: 'voxels' });
        await head.click();
        const ascending = await names(page);
        await head.click();
        const descending = await names(page);
        assert.equal(descending[0], 'sub-0011_task-rest');
        assert.equal(ascending[10], 'sub-0011_task-rest'); // what is missing comes last
        await page.locator('th button', { hasText: 'Status' }).click();
    });

    test('filters by words and by kind', async () => {
        const box = page.locator('input[type=text]');
        await box.fill('truncated');
        assert.deepEqual(await names(page), ['sub-0004_task-rest']);
        assert.equal(await page.locator('.count').textContent(), '1 of 12 runs');
        await box.fill('');
        await page.locator('select').selectOption({ label: 'fewer components (1)' });
        assert.deepEqual(await names(page), ['sub-0009_task-rest']);
        await page.locator('select').selectOption('');
    });

    test('draws the mean images', async () => {
        await page.locator('tr[data-run="sub-0001_task-rest"] canvas[data-drawn]').waitFor();
    });

    test('fetches nothing and complains about nothing', () => {
        assert.deepEqual(page.complaints, []);
        assert.equal(page.requests.filter((url) => !url.startsWith('file:') && !url.startsWith('data:')).length, 0);
    });
});

describe('a study of a thousand runs', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');

    test('has at most 6 MB and shows every run', async () => {
        const file = study(
            'thousand',
            Array.from({ length: 1000 }, (_, k) => record(k + 1, k % 100 === 0 ? DAMAGED : {})),
        );
        assert.ok(statSync(file).size <= 6e6, `${statSync(file).size} bytes`);
        const page = await open(browser, file);
        assert.equal((await names(page)).length, 1000);
        const last = page.locator('tbody tr').last();
        await last.scrollIntoViewIfNeeded();
        await last.locator('canvas[data-drawn]').waitFor();
        assert.ok((await page.locator('canvas[data-drawn]').count()) < 200, 'pictures out of sight were drawn');
    });
});

describe('a study with denoised runs', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');
    let page;
    before(async () => {
        const records = Array.from({ length: 6 }, (_, k) => record(k + 1, { Denoised: denoised(k + 1) }));
        records[2].Denoised = denoised(3, { ExitStatus: 3, Message: 'x.tsv holds the label "bad".', Files: [] });
        records[3].Denoised = denoised(4, { Notes: ['The labels are older than the result.'] });
        records[4].Denoised = undefined;
        page = await open(browser, study('denoised', records));
    });
    const row = (i) => page.locator(`tr[data-run="sub-000${i}_task-rest"]`);

    test('shows DVARS, temporal SNR and motion, before and after', async () => {
        assert.equal(await page.locator('th', { hasText: 'df after' }).isVisible(), true);
        assert.equal((await names(page))[0], 'sub-0003_task-rest'); // the failure first
        const heads = await page.locator('th button').allTextContents();
        const cells = await row(1).locator('td.number').allTextContents();
        const shown = (title) => cells[heads.indexOf(title) - 2]; // after name and status
        assert.equal(shown('DVARS before'), '8.29');
        assert.equal(shown('DVARS after'), '5.21');
        assert.equal(shown('tSNR before'), '69.9');
        assert.equal(shown('tSNR after'), '106');
        assert.equal(shown('FD (mm)'), '0.13');
        assert.equal(shown('r(DVARS, FD) after'), '0.18');
        await screenshot(page, 'study-denoised');
    });

    test('shows the measures of the analysis instead, if asked', async () => {
        const head = (title) => page.locator('th', { hasText: title });
        assert.equal(await head('voxels').isVisible(), false);
        await page.locator('select[aria-label="Show these measures"]').selectOption('analysis');
        assert.equal(await head('voxels').isVisible(), true);
        assert.equal(await head('tSNR after').isVisible(), false);
        await page.locator('select[aria-label="Show these measures"]').selectOption('denoising');
    });

    test('links to the report with the page on denoising', async () => {
        const link = row(1).locator('.denoised a').first();
        assert.equal(await link.textContent(), 'denoised (nonaggr)');
        assert.equal(await link.getAttribute('href'), 'sub-0001_task-rest_denoised.html');
    });

    test('says why a run is not denoised, and what is doubtful about its labels', async () => {
        assert.match(await row(3).textContent(), /not denoised.*holds the label "bad"/);
        assert.equal(await row(3).locator('.denoised a').count(), 1); // the log
        assert.deepEqual(await row(3).locator('.chip').allTextContents(), ['done', 'not denoised']);
        assert.deepEqual(await row(4).locator('.chip').allTextContents(), ['done']);
        assert.match(await row(4).textContent(), /The labels are older/);
        assert.equal(await row(5).locator('.denoised').count(), 0);
    });

    for (const width of [700, 390]) {
        test(`scrolls only the table sideways in a window of ${width} pixels`, async () => {
            await page.setViewportSize({ width, height: 800 });
            const box = page.locator('.runs-box[data-more-right]');
            await box.waitFor();
            assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), width);
            const head = await page.locator('.page-head').boundingBox();
            assert.equal(head.width, width);
            await screenshot(page, `study-denoised-${width}`);
            await box.evaluate((element) => element.scrollTo(element.scrollWidth, 100));
            const last = page.locator('thead th:visible').last();
            const { x, y, width: own } = await last.boundingBox();
            assert.ok(x + own <= width + 0.5, `${x} + ${own}`);
            const { y: top } = await page.locator('.runs-box').boundingBox();
            assert.ok(Math.abs(y - top) < 1, 'the heads stay at the top');
        });
    }

    test('has no complaints', () => assert.deepEqual(page.complaints, []));
});

test('a study without denoised runs has no columns for them', { skip: missingBrowser }, async () => {
    const text = readFileSync(study('plain', [record(1)]), 'utf8');
    assert.ok(!text.includes('DVARS before'));
});

describe('a study with a group analysis', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');

    const link = async (file) => {
        const page = await open(browser, file);
        const links = page.getByRole('link', { name: 'Group analysis' });
        return (await links.count()) === 0 ? null : links.getAttribute('href');
    };

    test('leads to its page', async () => {
        const file = study('together', [record(1)]);
        assert.equal(await link(file), null);
        mkdirSync(join(folder, 'together', 'group'));
        writeFileSync(join(folder, 'together', 'group', 'desc-groupICA_report.html'), '');
        study('together', [record(1)]);
        assert.equal(await link(file), 'group/desc-groupICA_report.html');
    });

    test('has the link as soon as the group is analysed', async () => {
        const data = join(folder, 'data');
        execFileSync(ZNICA, ['simulate', '--subjects', '2', '--size', 'tiny', '--sources', '3', '--out', data]);
        const file = study('analysed', [record(1)]);
        execFileSync(ZNICA, ['bids', data, join(folder, 'analysed'), 'group', '--ica', '3', '--repeats', '1']);
        const href = await link(file);
        assert.equal(href, 'group/desc-groupICA_report.html');
        assert.ok(existsSync(join(folder, 'analysed', href)));
    });
});
