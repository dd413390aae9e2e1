import type { Card } from './card';

/**
 * Draws cards one at a time: first those in view, then, while the browser is idle, the rest, so that they are ready for
 * scrolling and printing. The page stays responsive between two cards. Cards that are not in the page, because of a
 * filter or another view, wait until they are.
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

    /** To be called after every change of what is in view. */
    start(): void {
        if (this.running) return;
        this.running = true;
        void this.work().finally(() => {
            this.running = false;
        });
    }

    private async work(): Promise<void> {
        if (this.seen.length === 0) this.whenSeenDrawn(); // a small window may show no card at first
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
