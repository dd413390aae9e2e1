// The page over all runs of a study, made by the real command from made-up records.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdirSync, mkdtempSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, describe, test } from 'node:test';
import { browserFor, missingBrowser, screenshot } from './browser.mjs';

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
    for (const r of records) writeFileSync(join(out, 'logs', `${r.Run}.json`), JSON.stringify(r));
    execFileSync(process.env.ZNICA, ['bids', 'nowhere', out, 'group']);
    return join(out, 'index.html');
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
