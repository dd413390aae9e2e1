// What the threads of the page do while the tests' browser records them.

// In the page before its scripts: gaps between its frames.
export const COUNT_FRAMES = `
    if (window === top) {
        window.longestGap = 0;
        let last = performance.now();
        const frame = (now) => {
            longestGap = Math.max(longestGap, now - last);
            last = now;
            requestAnimationFrame(frame);
        };
        requestAnimationFrame(frame);
    }`;

// The browser's own tools ask the page now and then, which is not part of it.
const isTool = ({ args }) => args?.chrome_mojo_event_info?.mojo_interface_tag === 'blink.mojom.DevToolsSession';
const isTask = ({ ph, name }) => ph === 'X' && name.includes('RunTask');
const thread = ({ pid, tid }) => `${pid} ${tid}`;

function threadsNamed(events, wanted) {
    return new Set(events.filter(({ name, args }) => name === 'thread_name' && args.name === wanted).map(thread));
}

// Seconds of processor time of the workers.
function workersTime(events) {
    const workers = threadsNamed(events, 'DedicatedWorker thread');
    const tasks = events.filter((event) => isTask(event) && workers.has(thread(event)));
    return tasks.reduce((sum, { tdur = 0 }) => sum + tdur, 0) / 1e6;
}

// Milliseconds of the longest task: as the clock saw it, and of processor time.
function longestTask(events) {
    const main = threadsNamed(events, 'CrRendererMain');
    const here = events.filter((event) => main.has(thread(event)));
    const tools = here.filter((event) => event.ph === 'X' && isTool(event));
    const within = (task) => (other) =>
        thread(task) === thread(other) && other.ts >= task.ts && other.ts <= task.ts + task.dur;
    const tasks = here.filter((event) => isTask(event) && event.dur > 2000);
    const own = tasks.filter((task) => !tools.some(within(task)));
    const longest = (key) => Math.max(0, ...own.map((task) => task[key] ?? 0)) / 1000;
    return { clock: longest('dur'), processor: longest('tdur') };
}

/**
 * Records until the function that is returned is called, which returns milliseconds: `clock` and
 * `processor` of the longest task of the main thread, and the longest `gap` between two frames; and `workers`, their
 * processor time in seconds. The page must have been opened with
 * COUNT_FRAMES as its `first` script.
 */
export async function recordThreads(browser, page) {
    const session = await browser.context.newCDPSession(page);
    const events = [];
    session.on('Tracing.dataCollected', ({ value }) => events.push(...value));
    await session.send('Tracing.start', { traceConfig: { includedCategories: ['toplevel'] } });
    await page.evaluate('longestGap = 0');
    return async () => {
        const gap = await page.evaluate('longestGap');
        const complete = new Promise((done) => session.once('Tracing.tracingComplete', done));
        await session.send('Tracing.end');
        await complete;
        await session.detach();
        return { ...longestTask(events), gap, workers: workersTime(events) };
    };
}
