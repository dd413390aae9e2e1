import type { Signed } from './map_source';

/**
 * The sign that every component is shown with. The sign of a component is arbitrary, so its map, time course and
 * correlations may be inverted together; by default the longer tail of the map is positive. The files keep their sign.
 * The reader's choices are kept in the browser's storage.
 */
export class Signs {
    private readonly key: string;
    private chosen = new Map<string, boolean>(); // component -> inverted, where it is not the default
    private readonly listeners = new Set<(component: Signed) => void>();

    constructor(runId: string) {
        this.key = `znica-report-signs-${runId}`;
        try {
            this.chosen = new Map(JSON.parse(localStorage.getItem(this.key) ?? '[]') as [string, boolean][]);
        } catch {
            // nothing is stored
        }
    }

    /** Whether the component is shown with the opposite sign of the files. */
    isFlipped({ name, negativeTail }: Signed): boolean {
        return this.chosen.get(name) ?? negativeTail;
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
