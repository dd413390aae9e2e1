/** The frequency bands of the fingerprint and the clock by which the plug-in measures them. */
export interface Bands {
    /** Repetition time as the plug-in uses it, in whole seconds; 0 below one second. */
    wholeSeconds: number;
    /** Nyquist frequency of that clock, in Hz; NaN below one second, where the plug-in's bands are undefined. */
    nyquistHz: number;
    /** Limits of the bands as fractions of the Nyquist frequency; empty where they are undefined. */
    ranges: [number, number][];
    exact: boolean; // the repetition time is a whole number of seconds
}

/** Whether a parameter is defined at the repetition time; bands beyond the last one in use are not. */
export function isDefined(column: string, { ranges }: Bands): boolean {
    const band = /^power_band_(\d)$/.exec(column);
    return band === null || Number(band[1]) <= ranges.length;
}

const EDGES = [0.032, 0.08, 0.2, 0.4];

export function bandsFor(trSeconds: number): Bands {
    const wholeSeconds = Math.floor(trSeconds);
    const exact = wholeSeconds === trSeconds;
    if (wholeSeconds < 1) return { wholeSeconds, nyquistHz: NaN, ranges: [], exact };
    const nyquistHz = 0.5 / wholeSeconds;
    // At long repetition times fewer bands are in use, and the last of them extends to the Nyquist frequency.
    const count = nyquistHz >= 0.1 ? 5 : nyquistHz >= 0.05 ? 4 : 3;
    const limits = [0, ...EDGES.slice(0, count - 1), 1];
    const ranges = limits.slice(1).map((end, i): [number, number] => [limits[i], end]);
    return { wholeSeconds, nyquistHz, ranges, exact };
}
