/** Visible elements that extend past the right edge of the window or of the box that clips them. */
export const cutOff = (page) =>
    page.evaluate(() => {
        const scrolls = (element) => element.closest('.table-scroll, .visually-hidden, .page-title');
        return [...document.querySelectorAll('#app *')]
            .filter((element) => {
                const { right, width, height } = element.getBoundingClientRect();
                if (width === 0 || height === 0 || scrolls(element) || element.closest('[hidden]')) return false;
                const clip = element.parentElement.closest('.panel, .card') ?? document.documentElement;
                const edge = Math.min(innerWidth, clip.getBoundingClientRect().right);
                return right > edge + 0.5;
            })
            .map(
                (element) =>
                    `${element.tagName} ${element.className} ${element.id}: ${element.getBoundingClientRect().right}`,
            );
    });
