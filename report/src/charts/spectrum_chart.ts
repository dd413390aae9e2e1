import type { Bands } from '../data/bands';
import type { Component } from '../data/run';
import { type Spectrum, welch } from '../data/spectrum';
import { colour } from '../theme';
import { axis, type ChartBox, legend, wholeAxis } from './chart';

const spectra = new Map<Component, Spectrum>();

export function spectrumOf(component: Component): Spectrum {
    const spectrum = spectra.get(component) ?? welch(component.timeCourse);
    spectra.set(component, spectrum);
    return spectrum;
}

/** In Hz. */
function nyquistOf({ trSeconds }: Component): number {
    return 0.5 / trSeconds;
}

/**
 * Power over frequency in true Hz with the bands shaded. Returns a note on the method, and on the plug-in's own clock
 * where that differs: it takes the repetition time in whole seconds, so it gives the limits of the bands other names.
 */
export function showSpectrum(box: ChartBox, bands: Bands, component: Component, other: Component | null): string {
    const nyquist = nyquistOf(component);
    const curve = (of: Component, name: string): object => {
        const spectrum = spectrumOf(of);
        return {
            label: of.title,
            data: spectrum.position.map((position, k) => ({ x: position * nyquistOf(of), y: spectrum.percent[k] })),
            borderColor: colour(name),
            backgroundColor: colour(`${name}-fill`),
            fill: other === null,
            borderWidth: 1.6,
            pointRadius: 0,
            pointHitRadius: 6,
            tension: 0,
        };
    };
    const ranges = bands.ranges.map(([from, to], i) => ({ from: from * nyquist, to: to * nyquist, label: `${i + 1}` }));
    box.show(
        `Power spectrum of ${component.title} up to ${nyquist.toFixed(3)} Hz with ${ranges.length} bands`,
        () => ({
            type: 'line',
            data: {
                datasets: [curve(component, 'curve'), ...(other ? [curve(other, 'curve-other')] : [])] as never,
            },
            options: {
                parsing: false,
                normalized: true,
                interaction: { mode: 'index', intersect: false },
                scales: {
                    x: {
                        ...wholeAxis('Frequency (Hz)'),
                        type: 'linear',
                        min: 0,
                        max: Math.max(nyquist, other ? nyquistOf(other) : 0),
                    },
                    y: { ...axis('Power (% of total)'), min: 0 },
                },
                plugins: {
                    legend: legend(other !== null),
                    tooltip: {
                        callbacks: {
                            title: (items: { parsed: { x: number } }[]) => `${items[0].parsed.x.toFixed(4)} Hz`,
                            label: (item: { dataset: { label?: string }; parsed: { y: number } }) =>
                                `${item.dataset.label}: ${item.parsed.y.toFixed(2)} %`,
                        },
                    },
                },
            } as never,
        }),
        ranges,
    );
    const { segmentVolumes, points } = spectrumOf(component);
    return (
        `Welch's method: ${segmentVolumes}-volume segments overlapping by half, Hamming window, `
        + `${points} points.${clockNote(bands, component.trSeconds)}`
    );
}

function clockNote({ exact, ranges, wholeSeconds }: Bands, trSeconds: number): string {
    if (exact || ranges.length === 0) return '';
    return (
        ` The plug-in takes the repetition time of ${trSeconds} s as ${wholeSeconds} s, so its own limits of the bands are `
        + `${((trSeconds / wholeSeconds - 1) * 100).toFixed(0)} % higher than those shown.`
    );
}
