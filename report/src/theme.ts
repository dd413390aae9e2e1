/** Light or dark; follows the system until the reader chooses. */
export type Theme = 'light' | 'dark';

const KEY = 'znica-report-theme';
const listeners = new Set<() => void>();

function stored(): Theme | null {
    try {
        const value = localStorage.getItem(KEY);
        return value === 'light' || value === 'dark' ? value : null;
    } catch {
        return null; // storage may be disabled
    }
}

function apply(theme: Theme): void {
    if (document.documentElement.dataset.theme === theme) return;
    document.documentElement.dataset.theme = theme;
    for (const listener of listeners) listener();
}

const dark = matchMedia('(prefers-color-scheme: dark)');

function wanted(): Theme {
    return stored() ?? (dark.matches ? 'dark' : 'light');
}

export function currentTheme(): Theme {
    return document.documentElement.dataset.theme === 'dark' ? 'dark' : 'light';
}

export function startTheme(): void {
    apply(wanted());
    dark.addEventListener('change', () => apply(wanted()));
    addEventListener('beforeprint', () => apply('light')); // ink on white
    addEventListener('afterprint', () => apply(wanted()));
}

export function toggleTheme(): void {
    const theme: Theme = currentTheme() === 'dark' ? 'light' : 'dark';
    try {
        localStorage.setItem(KEY, theme);
    } catch {
        // the choice lasts until the page is closed
    }
    apply(theme);
}

/** Calls back after every change; returns a function that stops it. */
export function onThemeChange(listener: () => void): () => void {
    listeners.add(listener);
    return () => listeners.delete(listener);
}

/** A colour from the style sheet, by the name of its custom property without the leading dashes. */
export function colour(name: string): string {
    return getComputedStyle(document.documentElement).getPropertyValue(`--${name}`).trim();
}
