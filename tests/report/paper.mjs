// A page laid out as on paper, and where its parts are then.
import { painted } from './browser.mjs';

const SHEET = 794; // CSS pixels: A4, which media queries ask for
export const PAPER = 703; // without margins of 12 mm

/** In the page: once `window.printed` is set, scripts are not notified of new sizes, as on paper. */
export function observeUntilPrinted() {
    const Observer = window.ResizeObserver;
    window.ResizeObserver = class extends Observer {
        constructor(callback) {
            super((...about) => {
                if (!window.printed) callback(...about);
            });
        }
    };
    addEventListener(
        'resize',
        (event) => {
            if (window.printed) event.stopImmediatePropagation();
        },
        { capture: true },
    );
}

/** Lays the page out for paper after its scripts have run for the last time. */
export async function onPaper(page) {
    await painted(page);
    await page.evaluate(() => {
        dispatchEvent(new Event('beforeprint'));
        window.printed = true;
    });
    await page.emulateMedia({ media: 'print' });
    await page.addStyleTag({ content: `html { width: ${PAPER}px; }` });
    await page.setViewportSize({ width: SHEET, height: 1000 });
    await painted(page);
}

/** Boxes of the visible elements that match, each with the box of its panel. */
export const boxes = (page, selector) =>
    page.locator(selector).evaluateAll((all) =>
        all
            .map((element) => {
                const { left, right, top, bottom } = element.getBoundingClientRect();
                const panel = element.parentElement.closest('.panel')?.getBoundingClientRect();
                return { name: element.parentElement.className, left, right, top, bottom, panel: panel?.toJSON() };
            })
            .filter(({ left, right }) => right > left),
    );

export const inside = (box, frame) =>
    box.left >= frame.left && box.right <= frame.right && box.top >= frame.top && box.bottom <= frame.bottom;
export const overlap = (a, b) => a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
