export type Label = 'signal' | 'noise' | 'unsure';

export interface Entry {
    label: Label | null;
    note: string;
}

/** The three labels with their keys, and a sign and a word so that they do not depend on colour. */
export const LABELS: { label: Label; key: string; sign: string; title: string }[] = [
    { label: 'signal', key: 's', sign: '\u2713', title: 'Signal' },
    { label: 'noise', key: 'n', sign: '\u2715', title: 'Noise' },
    { label: 'unsure', key: 'u', sign: '?', title: 'Unsure' },
];

/** The label for a word of a table; null for n/a and for any other word. */
export function labelNamed(word: string): Label | null {
    return LABELS.find(({ label }) => label === word)?.label ?? null;
}

/**
 * The reader's labels of one run, by component name, kept in the browser's storage. A component that the reader has not
 * touched has its label from the metrics table.
 */
export class Labels {
    /** False if the browser stores nothing: the labels then last until the page is closed. */
    kept = true;
    private readonly key: string;
    private entries = new Map<string, Entry>(); // of the components that the reader has touched
    private readonly listeners = new Set<() => void>();
    private readonly history: [string, Label | null][][] = []; // labels before each change of the reader, oldest first

    /** `initial`: every component of the run with its label in the metrics table. */
    constructor(
        runId: string,
        private readonly initial: Map<string, Label | null>,
    ) {
        this.key = `znica-report-labels-${runId}`;
        this.read();
        this.probe();
        addEventListener('storage', ({ key }) => {
            // changed in another tab with this report
            if (key !== this.key && key !== null) return;
            this.read();
            this.notify();
        });
    }

    get(component: string): Entry {
        return this.entries.get(component) ?? { label: this.initial.get(component) ?? null, note: '' };
    }

    /** Changes label, note or both of components; returns how many of them differ from before. */
    change(changes: Iterable<[string, Partial<Entry>]>): number {
        this.read(); // another tab may have changed other components
        let changed = 0;
        const former: [string, Label | null][] = [];
        for (const [component, part] of changes) {
            const before = this.get(component);
            const after = { ...before, ...part };
            if (after.label === before.label && after.note === before.note) continue;
            if (after.label !== before.label) former.push([component, before.label]);
            this.entries.set(component, after);
            ++changed;
        }
        if (former.length > 0) this.history.push(former);
        this.write();
        this.notify();
        return changed;
    }

    setNote(component: string, note: string): void {
        this.change([[component, { note }]]);
    }

    setLabel(component: string, label: Label | null): void {
        this.change([[component, { label }]]);
    }

    /** Takes back the last change of labels; returns the first component that it concerned, null if there is none. */
    undo(): string | null {
        const former = this.history.pop();
        if (!former) return null;
        this.change(former.map(([component, label]) => [component, { label }]));
        this.history.pop(); // the change that undoing is
        return former[0][0];
    }

    /** The first of the components after `component` that has no label, starting over at the end; null if all have one. */
    nextWithout(components: string[], component: string): string | null {
        const own = components.indexOf(component);
        const after = [...components.slice(own + 1), ...components.slice(0, Math.max(0, own))];
        return after.find((name) => this.get(name).label === null) ?? null;
    }

    /** "12 of 50 labelled" */
    get progress(): string {
        const all = [...this.initial.keys()];
        return `${all.filter((name) => this.get(name).label !== null).length} of ${all.length} labelled`;
    }

    count(label: Label): number {
        return [...this.initial.keys()].filter((component) => this.get(component).label === label).length;
    }

    onChange(listener: () => void): void {
        this.listeners.add(listener);
    }

    private notify(): void {
        for (const listener of this.listeners) listener();
    }

    private read(): void {
        if (!this.kept) return;
        try {
            this.entries = new Map(
                Object.entries(JSON.parse(localStorage.getItem(this.key) ?? '{}') as Record<string, Entry>),
            );
        } catch {
            this.kept = false;
        }
    }

    // Finds out whether the browser stores anything. Under another key: what another tab is writing must stay.
    private probe(): void {
        try {
            localStorage.setItem('znica-report-probe', '');
        } catch {
            this.kept = false;
        }
    }

    private write(): void {
        if (!this.kept) return;
        try {
            localStorage.setItem(this.key, JSON.stringify(Object.fromEntries(this.entries)));
        } catch {
            this.kept = false;
        }
    }
}
