// Labels and notes: kept when another tab writes some too, and exported to and imported from tables.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { describe, test } from 'node:test';
import { browserFor, goTo, missingBrowser, openReport, STAY, showComponent, stay } from './browser.mjs';
import { STEM } from './made_up_run.mjs';
import { madeUp, ZNICA } from './runs.mjs';

describe('labels', { skip: missingBrowser }, () => {
    const browser = browserFor('canvas');

    const open = async (run, component) => {
        const page = await openReport(browser, run.report, { at: `#/component/${component}` });
        await stay(page);
        return page;
    };
    const pressed = (page) => page.locator('.label-button[aria-pressed=true]').allTextContents();
    const chips = (page) =>
        page
            .locator('.card')
            .evaluateAll((cards) =>
                Object.fromEntries(
                    cards
                        .map((card) => [card.dataset.component, card.querySelector('.card-label').textContent])
                        .filter(([, text]) => text),
                ),
            );
    const overview = async (page) => {
        await goTo(page, '#/');
        await page.locator('.card').first().waitFor();
        return page;
    };
    const read = async (page, file, text) => {
        writeFileSync(file, text);
        await page.setInputFiles('.label-bar input[type=file]', file);
        const message = page.locator('.label-bar .label-message').first();
        await message.filter({ hasText: /./ }).waitFor();
        return message.textContent();
    };

    test('from two tabs with the same report do not overwrite each other', async () => {
        const run = madeUp('two-tabs', { components: 4 });
        const [left, right] = [await open(run, 'ICA_00'), await open(run, 'ICA_01')];
        await left.keyboard.press('s');
        // A browser passes its storage from one tab to the other when it finds the time.
        await right.waitForFunction(() => Object.values(localStorage).some((labels) => labels.includes('signal')));
        await right.keyboard.press('n');
        await left.waitForFunction(() => Object.values(localStorage).some((labels) => labels.includes('noise')));
        await left.reload();
        assert.deepEqual(await chips(await overview(left)), { ICA_00: '\u2713 Signal', ICA_01: '\u2715 Noise' });
        await left.close();
        await right.close();
    });

    test('set in one tab are shown in the other', async () => {
        const run = madeUp('shared', { components: 4, volumes: 90 });
        const [left, right] = [await open(run, 'ICA_02'), await open(run, 'ICA_02')];
        await left.keyboard.press('u');
        await right.locator('.label-unsure[aria-pressed=true]').waitFor();
        await left.close();
        await right.close();
    });

    test('survive a classified metrics table and a new report, and start with its classes', async () => {
        const run = madeUp('classified', { components: 4, volumes: 100 });
        const page = await open(run, 'ICA_00');
        await page.keyboard.press('s');
        await page.locator('.label-signal[aria-pressed=true]').waitFor();
        const table = join(run.folder, `${STEM}_desc-ICA_metrics.tsv`);
        const lines = readFileSync(table, 'utf8').split('\n');
        const classes = [null, 'noise', 'noise', 'unsure', 'n/a']; // the header has none
        writeFileSync(
            table,
            lines.map((line, i) => (classes[i] ? line.replace(/\tn\/a$/, `\t${classes[i]}`) : line)).join('\n'),
        );
        execFileSync(ZNICA, ['report', run.folder]);
        await page.reload();
        await page.locator('body[data-shown]').waitFor();
        assert.deepEqual(await chips(await overview(page)), {
            ICA_00: '\u2713 Signal',
            ICA_01: '\u2715 Noise',
            ICA_02: '? Unsure',
        });
        await goTo(page, '#/component/ICA_01');
        await page.locator('body[data-shown=ICA_01]').waitFor();
        await page.click('.label-noise'); // removes the label, which is kept too
        await page.reload();
        await page.locator('body[data-shown=ICA_01]').waitFor();
        assert.deepEqual(await pressed(page), []);
        await page.close();
    });

    test('set by a click advance to the next component, unless switched off; removing one does not', async () => {
        const run = madeUp('clicked', { components: 4, measures: false, volumes: 130 });
        const first = STAY.replace('off', 'on');
        const page = await openReport(browser, run.report, { at: '#/component/ICA_00', first });
        await page.click('.label-noise');
        await page.locator('body[data-shown=ICA_01]').waitFor();
        await page.keyboard.press('s'); // labels the next one, not the one clicked
        await page.locator('body[data-shown=ICA_02]').waitFor();
        await page.click('.label-unsure');
        await page.locator('body[data-shown=ICA_03]').waitFor();
        await page.keyboard.press('ArrowLeft'); // its address may still be that of ICA_02
        await page.locator('body[data-shown=ICA_02]').waitFor();
        await page.click('.label-unsure');
        await page.locator('.label-unsure[aria-pressed=false]').waitFor();
        assert.equal(await page.locator('body').getAttribute('data-shown'), 'ICA_02');
        await stay(page);
        await page.click('.label-noise');
        await page.locator('.label-noise[aria-pressed=true]').waitFor();
        assert.equal(await page.locator('body').getAttribute('data-shown'), 'ICA_02');
        assert.deepEqual(await chips(await overview(page)), {
            ICA_00: '\u2715 Noise',
            ICA_01: '\u2713 Signal',
            ICA_02: '\u2715 Noise',
        });
        await page.close();
    });

    test('are not read from a table that names a component twice', async () => {
        const run = madeUp('twice', { components: 4, volumes: 140 });
        const page = await openReport(browser, run.report);
        const rows = ['ICA_01\tsignal', 'ICA_00\tnoise', 'ICA_00\tsignal'];
        const file = join(run.folder, 'twice.tsv');
        const message = await read(page, file, `component\tclassification\n${rows.join('\n')}\n`);
        assert.equal(message, 'The file names ICA_00 a second time; give each component one label.');
        assert.deepEqual(await chips(page), {});
        await page.close();
    });

    test('and notes survive reading a table without them', async () => {
        const run = madeUp('unlabelled-table', { components: 4, volumes: 110 });
        const page = await open(run, 'ICA_00');
        await page.keyboard.press('s');
        await page.fill('#note', 'default mode');
        await overview(page);
        const table = readFileSync(join(run.folder, `${STEM}_desc-ICA_metrics.tsv`), 'utf8');
        const file = join(run.folder, 'read.tsv');
        assert.equal(await read(page, file, table), '4 components read from read.tsv, 0 changed.');
        assert.deepEqual(await chips(page), { ICA_00: '\u2713 Signal' });
        const one = 'component\tclassification\nICA_00\tnoise\n';
        await read(page, file, one);
        await page.locator('.label-message', { hasText: '1 component read from read.tsv, 1 changed.' }).waitFor();
        await goTo(page, '#/component/ICA_00');
        assert.equal(await page.inputValue('#note'), 'default mode');
        assert.deepEqual(await pressed(page), ['\u2715Noise']);
        await page.close();
    });

    test('are exported with notes quoted for table readers, and imported from a spreadsheet', async () => {
        const run = madeUp('quotes', { components: 4, volumes: 95 });
        const page = await open(run, 'ICA_00');
        await page.fill('#note', '"left" motor');
        await overview(page);
        const [download] = await Promise.all([
            page.waitForEvent('download'),
            page.click('[data-action="export-labels"]'),
        ]);
        assert.equal(readFileSync(await download.path(), 'utf8').split('\n')[1], 'ICA_00\tn/a\t"""left"" motor"');

        const lines = [
            '"component"\t"classification"\t"note"',
            '"ICA_00"\t"noise"\t"a ""second"" look"',
            'ICA_01\tsignal\t"two\nlines"',
            'ICA_02\tunsure\t"open',
            'ICA_03\tn/a\t',
        ];
        await read(page, join(run.folder, 'read.tsv'), lines.join('\r\n'));
        assert.deepEqual(await chips(page), { ICA_00: '\u2715 Noise', ICA_01: '\u2713 Signal', ICA_02: '? Unsure' });
        const notes = [];
        for (const name of ['ICA_00', 'ICA_01', 'ICA_02']) {
            await goTo(page, `#/component/${name}`);
            await page.locator(`body[data-shown=${name}]`).waitFor();
            notes.push(await page.inputValue('#note'));
        }
        assert.deepEqual(notes, ['a "second" look', 'two lines', '"open']);
        await page.close();
    });

    test('and notes are shown on the cards', async () => {
        const run = madeUp('noted', { components: 4, volumes: 85 });
        const page = await open(run, 'ICA_01');
        await page.fill('#note', 'eyes, most of it');
        await overview(page);
        assert.deepEqual(await page.locator('.card-note:visible').allTextContents(), ['eyes, most of it']);
        await page.close();
    });
});

for (const renderer of ['webgl2', 'canvas']) {
    describe(`with ${renderer} the page`, { skip: missingBrowser }, () => {
        const browser = browserFor(renderer);

        test('keeps labels and notes, exports them and imports them again', async () => {
            const thirty = madeUp('thirty', { components: 30 });
            const page = await openReport(browser, thirty.report);
            await showComponent(page, 'ICA_06', renderer);
            await stay(page);
            await page.keyboard.press('s');
            await page.fill('#note', 'visual\tcortex');
            await page.locator('h2').first().click();
            await showComponent(page, 'ICA_07', renderer);
            await page.click('.label-noise');
            await page.reload();
            await page.locator('body[data-shown="ICA_07"]').waitFor();
            assert.equal(await page.locator('.label-noise').getAttribute('aria-pressed'), 'true');

            await page.click('a[href="#/"] >> nth=0');
            const [download] = await Promise.all([
                page.waitForEvent('download'),
                page.click('[data-action="export-labels"]'),
            ]);
            assert.equal(download.suggestedFilename(), 'sub-made_task-up_desc-ICA_labels.tsv');
            const lines = readFileSync(await download.path(), 'utf8').split('\n');
            assert.equal(lines[0], 'component\tclassification\tnote');
            assert.deepEqual(
                lines.slice(1, -1).map((line) => line.split('\t')[0]),
                thirty.metrics.map((row) => row.component),
            );
            assert.equal(lines[7], 'ICA_06\tsignal\tvisual cortex');
            assert.equal(lines[8], 'ICA_07\tnoise\tn/a');
            assert.equal(lines[9], 'ICA_08\tn/a\tn/a');

            const changed = join(thirty.folder, 'labels.tsv');
            writeFileSync(
                changed,
                lines.join('\n').replace('ICA_08\tn/a', 'ICA_08\tunsure').replace('ICA_06\tsignal', 'ICA_06\tnoise'),
            );
            await page.setInputFiles('.label-bar input[type="file"]', changed);
            await page
                .locator('.label-message', { hasText: '30 components read from labels.tsv, 2 changed.' })
                .waitFor();
            assert.equal(await page.locator('.card[data-component="ICA_08"] .card-label').textContent(), '? Unsure');
            assert.equal(
                await page.locator('.card[data-component="ICA_06"] .card-label').textContent(),
                '\u2715 Noise',
            );

            writeFileSync(changed, 'component\tclassification\nICA_99\tsignal\n');
            await page.setInputFiles('.label-bar input[type="file"]', changed);
            await page.locator('.label-message', { hasText: 'no component "ICA_99"' }).waitFor();
            await page.evaluate(() => localStorage.clear());
            await page.close();
        });
    });
}
