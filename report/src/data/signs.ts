import type { Signed } from './map_source';

/**
 * The sign that every component is shown with. The sign of a component is arbitrary, so its map, time course and
 * correlations may be inverted together; by default the longer tail of the map is positive, or the sign agrees with that
 * of the component that it matches. The files keep their sign.
 * The reader's choices are kept in the browser's storage.
 */
export class Signs {
    private readonly key: string;
    private chosen = new Map<string, boolean>(); // component -> inverted, where it is not the default
    private readonly matches = new Map<string, { other: Signed; opposite: boolean }>();
    private readonly listeners = new Set<(component: Signed) => void>();

    constructor(runId: string) {
        this.key = `znica-report-signs-${runId}`;
        try {
            this.chosen = new Map(JSON.parse(localStorage.getItem(this.key) ?? '[]') as [string, boolean][]);
        } catch {
            // nothing is stored
        }
    }

    /** From now on a component has the sign with which its map correlates positively with that of another one. */
    follow(component: Signed, other: Signed, r: number): void {
        this.matches.set(component.name, { other, opposite: r < 0 });
    }

    /** Whether the component is shown with the opposite sign of the files. */
    isFlipped({ name, negativeTail }: Signed): boolean {
        const match = this.matches.get(name);
        return this.chosen.get(name) ?? (match ? this.isFlipped(match.other) !== match.opposite : negativeTail);
    }

    /** Factor between the values in the files and those shown. */
    of(component: Signed): 1 | -1 {
        return this.isFlipped(component) ? -1 : 1;
    }

    flip(component: Signed): void {
        this.chosen.set(component.name, !this.isFlipped(component));
        try {
            localStorage.setItem(this.key, JSON.stringify([...this.chosen]));
        } catch {
            // the choice lasts until the page is closed
        }
        for (const listener of this.listeners) listener(component);
    }

    onChange(listener: (component: Signed) => void): void {
        this.listeners.add(listener);
    }
}
