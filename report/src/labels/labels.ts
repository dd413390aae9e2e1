export type Label = 'signal' | 'noise' | 'unsure';

export interface Entry {
    label: Label | null;
    note: string;
}

/** The three labels with their keys; a sign and a word beside the colour. */
export const LABELS: { label: Label; key: string; sign: string; title: string }[] = [
    { label: 'signal', key: 's', sign: '\u2713', title: 'Signal' },
    { label: 'noise', key: 'n', sign: '\u2715', title: 'Noise' },
    { label: 'unsure', key: 'u', sign: '?', title: 'Unsure' },
];

/** The reader's labels of one run, by component name, kept in the browser's storage. */
export class Labels {
    /** False where the browser keeps nothing: then the labels last until the page is closed. */
    readonly kept: boolean;
    private readonly key: string;
    private readonly entries = new Map<string, Entry>();
    private readonly listeners = new Set<() => void>();

    constructor(runId: string) {
        this.key = `znica-report-labels-${runId}`;
        this.kept = this.read();
    }

    get(component: string): Entry {
        return this.entries.get(component) ?? { label: null, note: '' };
    }

    set(component: string, entry: Entry): void {
        this.setAll([[component, entry]]);
    }

    setAll(entries: Iterable<[string, Entry]>): void {
        for (const [component, entry] of entries) this.entries.set(component, entry);
        this.write();
        for (const listener of this.listeners) listener();
    }

    /** Sets a label, or takes it away when it is set already. */
    toggle(component: string, label: Label): void {
        const entry = this.get(component);
        this.set(component, { ...entry, label: entry.label === label ? null : label });
    }

    count(label: Label): number {
        return [...this.entries.values()].filter((entry) => entry.label === label).length;
    }

    onChange(listener: () => void): void {
        this.listeners.add(listener);
    }

    private read(): boolean {
        try {
            const stored = JSON.parse(localStorage.getItem(this.key) ?? '{}') as Record<string, Entry>;
            for (const [component, entry] of Object.entries(stored)) this.entries.set(component, entry);
            localStorage.setItem(this.key, JSON.stringify(stored));
            return true;
        } catch {
            return false;
        }
    }

    private write(): void {
        try {
            localStorage.setItem(this.key, JSON.stringify(Object.fromEntries(this.entries)));
        } catch {
            // `kept` has told the reader
        }
    }
}
