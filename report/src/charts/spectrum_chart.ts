import type { Bands } from '../data/bands';
import type { Component } from '../data/run';
import { type Spectrum, welch } from '../data/spectrum';
import { colour } from '../theme';
import { axis, type ChartBox, legend, wholeAxis } from './chart';

const spectra = new Map<Component, Spectrum>();

function spectrumOf(component: Component): Spectrum {
    const spectrum = spectra.get(component) ?? welch(component.timeCourse);
    spectra.set(component, spectrum);
    return spectrum;
}

/**
 * Power over frequency with the bands shaded. The axis follows the plug-in's clock, the repetition time in whole
 * seconds, because the bands are defined on that clock; where it differs from the true one, a second axis at the top
 * shows the true frequencies. Without bands there is only the true axis. Returns a note on the method.
 */
export function showSpectrum(
    box: ChartBox,
    bands: Bands,
    trSeconds: number,
    component: Component,
    other: Component | null,
): string {
    const trueNyquist = 0.5 / trSeconds;
    const twoClocks = !bands.exact && bands.ranges.length > 0;
    const nyquist = twoClocks ? bands.nyquistHz : trueNyquist;
    const inHz = (x: number, digits: number): string =>
        `${((x * trueNyquist) / nyquist).toFixed(digits)} Hz`
        + (twoClocks ? ` (${x.toFixed(digits)} Hz on the plug-in's clock)` : '');
    const curve = (of: Component, name: string): object => {
        const spectrum = spectrumOf(of);
        return {
            label: of.title,
            data: spectrum.position.map((position, k) => ({ x: position * nyquist, y: spectrum.percent[k] })),
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
    const title = twoClocks ? `Frequency (Hz, repetition time taken as ${bands.wholeSeconds} s)` : 'Frequency (Hz)';
    box.show(
        `Power spectrum of ${component.title} up to ${inHz(nyquist, 3)} with ${ranges.length} bands`,
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
                    x: { ...wholeAxis(title), type: 'linear', min: 0, max: nyquist },
                    y: { ...axis('Power (% of total)'), min: 0 },
                    ...(!twoClocks
                        ? {}
                        : {
                              top: {
                                  ...wholeAxis('True frequency (Hz)'),
                                  type: 'linear',
                                  position: 'top',
                                  min: 0,
                                  max: trueNyquist,
                              },
                          }),
                },
                plugins: {
                    legend: legend(other !== null),
                    tooltip: {
                        callbacks: {
                            title: (items: { parsed: { x: number } }[]) => inHz(items[0].parsed.x, 4),
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
        `For display: Welch's method, segments of ${segmentVolumes} volumes overlapping by half, Hamming window, `
        + `${points}-point transform.`
    );
}
