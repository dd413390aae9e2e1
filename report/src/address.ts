const LEAST_MS = 150; // between two changes; browsers ignore changes that follow each other too closely for long

/**
 * Lets links to places of this page work where it is shown inside another page: there, relative links lead to the other
 * page.
 */
export function followOwnLinks(): void {
    if (location.protocol !== 'about:') return;
    addEventListener('click', (event) => {
        const link = (event.target as HTMLElement).closest('a');
        const hash = link?.getAttribute('href');
        if (!hash?.startsWith('#') || event.ctrlKey || event.metaKey || event.shiftKey) return;
        event.preventDefault();
        location.hash = hash;
    });
}

/** The address of the page, which follows the reader without taking part in the navigation. */
export class Address {
    private last = 0; // time of the last change
    private timer = 0;

    set(hash: string): void {
        this.forget();
        const wait = Math.max(0, this.last + LEAST_MS - performance.now());
        if (wait === 0) this.change(hash);
        else this.timer = window.setTimeout(() => this.change(hash), wait);
    }

    /** The reader has navigated, so a change that waits is obsolete. */
    forget(): void {
        clearTimeout(this.timer);
    }

    private change(hash: string): void {
        this.last = performance.now();
        history.replaceState(null, '', location.href.replace(/#.*/, '') + hash);
    }
}
