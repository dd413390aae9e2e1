/** Fades the edges of a box behind which more of its content can be scrolled into view. */
export function fadeEdges(box: HTMLElement): void {
    const refresh = (): void => {
        box.toggleAttribute('data-more-right', box.scrollLeft + box.clientWidth < box.scrollWidth - 1);
        box.toggleAttribute('data-more-below', box.scrollTop + box.clientHeight < box.scrollHeight - 1);
    };
    box.addEventListener('scroll', refresh, { passive: true });
    new ResizeObserver(refresh).observe(box);
}
