// The page around the runs: refusals, limits, cancelling, network, storage, keyboard, sizes.
import assert from 'node:assert/strict';
import { execFileSync, spawnSync } from 'node:child_process';
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { before, describe, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { browserFor, screenshot } from '../report/browser.mjs';
import { ZNICA } from '../report/runs.mjs';
import {
    choose,
    heapOf,
    missingPage,
    openPage,
    PAGE,
    PYTHON,
    refused,
    run,
    scratchFolder,
    setOptions,
    withoutWorkers,
} from './page.mjs';

const MAKE_IMAGE = fileURLToPath(new URL('make_image.py', import.meta.url));
const browser = browserFor('canvas');
const withWebgl = browserFor('webgl2');
const scratch = scratchFolder();
const at = (name) => join(scratch, name);

function makeImage(kind, name) {
    execFileSync(PYTHON, [MAKE_IMAGE, kind, at(name)]);
    return at(name);
}

before(() => {
    if (!missingPage) makeImage('small', 'small_bold.nii.gz');
});

// What the command says about a file of the scratch folder.
function commandSays(name) {
    const { status, stderr } = spawnSync(ZNICA, ['run', name, '--out', at('refused')], {
        cwd: scratch,
        encoding: 'utf8',
    });
    assert.equal(status, 3);
    return stderr.trim().replace(/^znica: /, '');
}

describe('an input that cannot be analysed', { skip: missingPage }, () => {
    async function assertSameRefusal(name) {
        const page = await openPage(browser);
        assert.equal(await refused(page, [at(name)]), commandSays(name));
        assert.equal(await page.locator('#run').isVisible(), false);
        await page.close();
    }

    test('is refused as by the command: a truncated file', async () => {
        const whole = readFileSync(at('small_bold.nii.gz'));
        writeFileSync(at('truncated.nii.gz'), whole.subarray(0, whole.length / 2));
        await assertSameRefusal('truncated.nii.gz');
    });

    test('is refused as by the command: text', async () => {
        writeFileSync(at('text.nii'), 'This is not an image.\n'.repeat(100));
        await assertSameRefusal('text.nii');
    });

    test('is refused as by the command: a single volume', async () => {
        makeImage('volume', 'volume.nii.gz');
        await assertSameRefusal('volume.nii.gz');
    });

    test('is refused before it is read if it does not fit into the memory of a tab', async () => {
        const page = await openPage(browser);
        await page.locator('[id="option--mask"]').evaluate((select) => {
            select.value = 'none';
        });
        const said = await refused(page, [makeImage('huge', 'huge_bold.nii')]);
        assert.match(said, /^huge_bold\.nii needs about [\d.]+ GiB of memory, but [\d.]+ GiB are free/);
        assert.match(said, /A browser tab can use 4 GiB at most\. A smaller mask/);
        assert.doesNotMatch(said, /--memory/);
        assert.equal(await page.locator('#run').isVisible(), false);
        await page.close();
    });
});

describe('the page', { skip: missingPage }, () => {
    test('excludes a voxel that is not finite and says so', async () => {
        const page = await openPage(browser);
        await choose(page, [makeImage('nan', 'nan_bold.nii.gz')]);
        assert.match(await page.locator('.facts').innerText(), /1,071 voxels; 1 excluded \(non-finite or constant\)/);
        await choose(page, [at('small_bold.nii.gz')]);
        assert.match(await page.locator('.facts').innerText(), /1,072 voxels\n/);
        await page.close();
    });

    test('takes files that are dropped, and a name that begins with a dash', async () => {
        const page = await openPage(browser);
        const base64 = readFileSync(at('small_bold.nii.gz')).toString('base64');
        await page.evaluate((text) => {
            const bytes = Uint8Array.from(atob(text), (c) => c.charCodeAt(0));
            const dataTransfer = new DataTransfer();
            dataTransfer.items.add(new File([bytes], '-dash_bold.nii.gz'));
            dataTransfer.items.add(new File(['{"RepetitionTime": 1.5}'], '-dash_bold.json'));
            document.querySelector('.drop').dispatchEvent(new DragEvent('drop', { dataTransfer, bubbles: true }));
        }, base64);
        await page.locator('#run:visible').waitFor();
        assert.match(await page.locator('.facts').innerText(), /1\.5 s \(.*-dash_bold\.json\)/);
        await page.close();
    });

    test('lets the reader correct what it refused', async () => {
        const page = await openPage(browser);
        await choose(page, [at('small_bold.nii.gz')]);
        await setOptions(page, { '--tr': 2000 });
        const message = page.locator('.message:not(:empty)');
        await message.waitFor();
        assert.match(await message.innerText(), /2000 is not a repetition time; give seconds/);
        assert.equal(await page.locator('#run').isVisible(), false);
        await setOptions(page, { '--tr': 1.25 });
        await page.locator('#run:visible').waitFor();
        assert.match(await page.locator('.facts').innerText(), /1\.25 s \(--tr\)/);
        await page.close();
    });

    test('shows why a run was refused, where the reader sees it', async () => {
        const page = await openPage(browser);
        await choose(page, [at('small_bold.nii.gz')]);
        await setOptions(page, { '--components': 31 });
        await page.locator('#run').click();
        const message = page.locator('.message:not(:empty)');
        await message.waitFor();
        assert.match(await message.innerText(), /^31 components are more than the 30 volumes of small_bold\.nii\.gz/);
        assert.ok(await message.evaluate((element) => element.getBoundingClientRect().top < innerHeight));
        await page.close();
    });

    test('cancels a run and starts it again, twice without growing', async () => {
        const page = await openPage(browser);
        await choose(page, [at('small_bold.nii.gz')]);
        await setOptions(page, { '--components': 4, '--seed': 1, '--repeats': 1000 });
        await page.locator('#run').click();
        await page.locator('.stages li', { hasText: 'start' }).first().waitFor();
        await screenshot(page, 'web-running');
        await page.locator('#cancel').click();
        await page.locator('#run:visible').waitFor();
        await withoutWorkers(page);
        await setOptions(page, { '--repeats': 1 });
        const heaps = [];
        for (let i = 0; i < 2; ++i) {
            await run(page);
            heaps.push(await heapOf(page));
            await withoutWorkers(page);
            await page.locator('#close').click();
        }
        assert.ok(heaps[0] > 0);
        assert.equal(heaps[1], heaps[0]);
        assert.deepEqual(page.complaints, []);
        await page.close();
    });

    test('works offline and makes no request', async () => {
        const page = await openPage(browser);
        await browser.context.setOffline(true);
        await choose(page, [at('small_bold.nii.gz')]);
        await setOptions(page, { '--components': 4 });
        await run(page);
        await browser.context.setOffline(false);
        assert.deepEqual(
            page.requests.filter((url) => !url.startsWith('blob:')),
            [`file://${PAGE}`],
        );
        assert.deepEqual(page.complaints, []);
        await page.close();
    });

    test('forbids requests, and scripts that are not its own', async () => {
        const page = await openPage(browser);
        const attempts = await page.evaluate(async () => {
            const violated = [];
            addEventListener('securitypolicyviolation', (event) => violated.push(event.effectiveDirective));
            const failed = await fetch('https://example.org/').then(
                () => false,
                () => true,
            );
            const script = document.createElement('script');
            script.textContent = 'window.intruded = true';
            document.head.append(script);
            await new Promise((done) => setTimeout(done, 50));
            return { failed, violated, intruded: 'intruded' in window };
        });
        assert.deepEqual(attempts, { failed: true, violated: ['connect-src', 'script-src-elem'], intruded: false });
        await page.close();
    });

    test('stores nothing but labels, also for a page from disk', async () => {
        const page = await openPage(browser);
        await choose(page, [at('small_bold.nii.gz')]);
        await setOptions(page, { '--components': 4 });
        const report = await run(page);
        await report.locator('.card-link').first().click();
        await report.locator('body[data-shown="ICA_00"]').waitFor();
        await report.locator('body').press('s');
        await page.waitForFunction(() =>
            Object.keys(localStorage).some((key) => key.startsWith('znica-report-labels-')),
        );
        const keys = await page.evaluate(() => Object.keys(localStorage));
        assert.ok(
            keys.every((key) => /^znica-report-(labels-|probe$)/.test(key)),
            keys.join(' '),
        );
        assert.deepEqual(await page.evaluate(() => indexedDB.databases()), []);
        await page.close();
    });

    test('shows brains by WebGL under its policy', async () => {
        const page = await openPage(withWebgl);
        await choose(page, [at('small_bold.nii.gz')]);
        await setOptions(page, { '--components': 4 });
        const report = await run(page);
        await report.locator('.card-link').first().click();
        await report.locator('.brain .planes[data-renderer="webgl2"]:not(.planes-waiting)').first().waitFor();
        assert.deepEqual(page.complaints, []);
        await page.close();
    });

    test('is used by keyboard alone', async () => {
        const page = await openPage(browser);
        const focused = () => page.evaluate(() => document.activeElement.id);
        for (let i = 0; i < 10 && (await focused()) !== 'sample'; ++i) await page.keyboard.press('Tab');
        await page.keyboard.press('Enter');
        await page.locator('#run:visible').waitFor();
        for (let i = 0; i < 30 && (await focused()) !== 'run'; ++i) await page.keyboard.press('Tab');
        await page.keyboard.press('Enter');
        await page.frameLocator('iframe.report').locator('.card[data-drawn]').first().waitFor();
        for (let i = 0; i < 30 && (await focused()) !== 'close'; ++i) await page.keyboard.press('Tab');
        await page.keyboard.press('Enter');
        await page.locator('#run:visible').waitFor();
        await page.close();
    });

    for (const [name, settings] of [
        ['dark', { dark: true }],
        ['narrow', { viewport: { width: 390, height: 844 } }],
    ]) {
        test(`is legible when it is ${name}`, async () => {
            const page = await openPage(browser, settings);
            const assertFits = async () => {
                const fits = () => document.documentElement.scrollWidth <= innerWidth;
                assert.ok(await page.evaluate(fits), 'no horizontal scrolling');
            };
            await choose(page, [at('small_bold.nii.gz')]);
            await setOptions(page, { '--components': 4 });
            await screenshot(page, `web-input-${name}`);
            await assertFits();
            await run(page);
            await screenshot(page, `web-result-${name}`);
            await assertFits();
            const theme = await page.evaluate(() => document.documentElement.dataset.theme);
            assert.equal(theme, settings.dark ? 'dark' : 'light');
            await page.close();
        });
    }

    test('says what the browser lacks', async () => {
        for (const [first, words] of [
            ['delete window.WebAssembly', /no WebAssembly/],
            ['WebAssembly.validate = () => false', /no vectors in WebAssembly \(SIMD\)/],
        ]) {
            const page = await openPage(browser, { first, until: '.opening' });
            await page.locator('.opening', { hasText: 'browser' }).waitFor();
            assert.match(await page.locator('.opening').innerText(), words);
            await page.close();
        }
    });
});
