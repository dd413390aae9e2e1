/** "22,456" */
export function grouped(value: number): string {
    return value.toLocaleString('en-US');
}

/** A number to `digits` significant digits, without an exponent unless very small or large; "n/a" if non-finite. */
export function short(value: number, digits = 3): string {
    if (!Number.isFinite(value)) return 'n/a';
    if (value !== 0 && (Math.abs(value) < 1e-4 || Math.abs(value) >= 1e6)) return value.toExponential(digits - 1);
    return String(Number(value.toPrecision(digits)));
}

/** A stability index of at most 1; only a perfect one is "1". */
export function stabilityText(index: number): string {
    return short(index < 1 ? Math.min(index, 0.999) : index);
}

/** A map value with a fixed number of decimals and a true minus sign. */
export function fixed(value: number, decimals: number): string {
    const text = Math.abs(value).toFixed(Math.max(0, decimals));
    return value < 0 && Number(text) !== 0 ? `\u2212${text}` : text;
}

/** "3 min 20 s", "0.4 s" */
export function duration(seconds: number): string {
    if (seconds < 10) return `${seconds.toFixed(1)} s`;
    if (seconds < 60) return `${Math.round(seconds)} s`;
    const minutes = Math.floor(seconds / 60);
    return `${minutes} min ${Math.round(seconds - 60 * minutes)} s`;
}

export function plural(count: number, word: string): string {
    return `${grouped(count)} ${word}${count === 1 ? '' : 's'}`;
}
