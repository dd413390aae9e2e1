// What the main thread of the page does while the tests' browser records it.

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
const isMain = ({ name, args }) => name === 'thread_name' && args.name === 'CrRendererMain';
const thread = ({ pid, tid }) => `${pid} ${tid}`;

// Milliseconds of the longest task: as the clock saw it, and of processor time.
function longestTask(events) {
    const main = new Set(events.filter(isMain).map(thread));
    const here = events.filter((event) => event.ph === 'X' && main.has(thread(event)));
    const tools = here.filter(isTool);
    const within = (task) => (other) =>
        thread(task) === thread(other) && other.ts >= task.ts && other.ts <= task.ts + task.dur;
    const tasks = here.filter(({ name, dur }) => name.includes('RunTask') && dur > 2000);
    const own = tasks.filter((task) => !tools.some(within(task)));
    const longest = (key) => Math.max(0, ...own.map((task) => task[key] ?? 0)) / 1000;
    return { clock: longest('dur'), processor: longest('tdur') };
}

/**
 * Records the main thread until the function that is returned is called, which returns milliseconds: `clock` and
 * `processor` of the longest task, and the longest `gap` between two frames. The page must have been opened with
 * COUNT_FRAMES as its `first` script.
 */
export async function recordMainThread(browser, page) {
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
        return { ...longestTask(events), gap };
    };
}
