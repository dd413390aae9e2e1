/** A power spectrum for display; the five band parameters come from the metrics table, not from here. */
export interface Spectrum {
    /** Fractions of the Nyquist frequency, 0 to 1. */
    position: number[];
    /** Per cent of the total power. */
    percent: number[];
    segmentVolumes: number;
    points: number;
}

/**
 * Welch (1967): segments of T / 4.5 volumes, overlapping by half, a symmetric Hamming window, zero-padded to a power of
 * two of at least 256; longer segments are wrapped around. These are the settings of the plug-in's band powers, so that
 * the shaded areas are what those sum.
 */
export function welch(timeCourse: number[]): Spectrum {
    const volumes = timeCourse.length;
    const length = Math.max(2, Math.floor(volumes / 4.5));
    const step = length - Math.floor(length / 2);
    const points = Math.max(256, 2 ** Math.floor(Math.log2(length) + 0.5));
    const mean = timeCourse.reduce((sum, value) => sum + value, 0) / volumes;
    const window = Array.from({ length }, (_, n) => 0.54 - 0.46 * Math.cos((2 * Math.PI * n) / (length - 1)));
    const cosine = Array.from({ length: points }, (_, n) => Math.cos((2 * Math.PI * n) / points));
    const sine = Array.from({ length: points }, (_, n) => Math.sin((2 * Math.PI * n) / points));
    const power = new Array<number>(points / 2 + 1).fill(0);
    for (let start = 0; start + length <= volumes; start += step) {
        const segment = window.map((weight, n) => weight * (timeCourse[start + n] - mean));
        for (let k = 0; k < power.length; ++k) {
            let real = 0;
            let imaginary = 0;
            for (let n = 0; n < length; ++n) {
                real += segment[n] * cosine[(k * n) % points];
                imaginary += segment[n] * sine[(k * n) % points];
            }
            power[k] += real * real + imaginary * imaginary;
        }
    }
    const total = power.reduce((sum, value) => sum + value, 0);
    return {
        position: power.map((_, k) => k / (power.length - 1)),
        percent: power.map((value) => (total > 0 ? (100 * value) / total : 0)),
        segmentVolumes: length,
        points,
    };
}
