import type { Card } from './card';

/**
 * Draws cards one after another: first the ones in sight, then, while the browser has nothing else to do, the rest, so
 * that scrolling and printing find them ready. Between two cards the page can react. Cards that are not in the page,
 * because a filter keeps them out or another view is shown, wait until they are.
 */
export class DrawQueue {
    private seen: Card[] = [];
    private rest: Card[] = [];
    private running = false;

    constructor(
        private readonly draw: (card: Card) => Promise<void>,
        private readonly whenSeenDrawn: () => void,
    ) {}

    inSight(card: Card): void {
        if (!card.drawn && !this.seen.includes(card)) this.seen.push(card);
    }

    outOfSight(card: Card): void {
        this.seen = this.seen.filter((other) => other !== card);
    }

    later(cards: Card[]): void {
        this.rest = cards;
    }

    /** After every change of what is in sight. */
    start(): void {
        if (this.running) return;
        this.running = true;
        void this.work().finally(() => {
            this.running = false;
        });
    }

    private async work(): Promise<void> {
        if (this.seen.length === 0) this.whenSeenDrawn(); // a small window may hold no card at first
        for (;;) {
            const urgent = this.seen.shift();
            if (urgent) {
                if (!urgent.drawn && urgent.hasPlace()) await this.draw(urgent);
                if (this.seen.length === 0) this.whenSeenDrawn();
                continue;
            }
            const card = this.rest.find((candidate) => !candidate.drawn && candidate.hasPlace());
            if (!card) return;
            await idle();
            if (this.seen.length === 0 && !card.drawn && card.hasPlace()) await this.draw(card);
        }
    }
}

function idle(): Promise<void> {
    return new Promise((resolve) => {
        if ('requestIdleCallback' in window) requestIdleCallback(() => resolve(), { timeout: 500 });
        else setTimeout(resolve, 30);
    });
}
