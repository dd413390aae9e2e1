/** The frequency bands of the fingerprint and the clock that the plug-in measures them with. */
export interface Bands {
    /** The repetition time that the plug-in counts with: whole seconds. 0 below one second. */
    wholeSeconds: number;
    /** Nyquist frequency of that clock, in Hz; NaN below one second, where the plug-in's bands are undefined. */
    nyquistHz: number;
    /** Limits of the bands as fractions of the Nyquist frequency; empty where they are undefined. */
    ranges: [number, number][];
    exact: boolean; // the repetition time is a whole number of seconds
}

/** Whether a parameter means something at the repetition time: bands beyond the last one that is used do not. */
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
    // Long repetition times reach fewer bands: the plug-in joins the rest to the last one that it uses.
    const count = nyquistHz >= 0.1 ? 5 : nyquistHz >= 0.05 ? 4 : 3;
    const limits = [0, ...EDGES.slice(0, count - 1), 1];
    const ranges = limits.slice(1).map((end, i): [number, number] => [limits[i], end]);
    return { wholeSeconds, nyquistHz, ranges, exact };
}
