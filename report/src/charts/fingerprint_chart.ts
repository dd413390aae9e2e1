import { FINGERPRINT, FINGERPRINT_START } from '../data/metrics';
import type { Component } from '../data/run';
import { short } from '../numbers';
import { colour } from '../theme';
import { type ChartBox, legend } from './chart';

/** The eleven parameters of the fingerprint in their fixed order; NaN where the table has n/a. */
export function fingerprintOf(component: Component): number[] {
    return component.values.slice(FINGERPRINT_START);
}

/** The fingerprint as a radar chart, from 0 at the centre to 1. */
export function showFingerprint(box: ChartBox, component: Component, other: Component | null): void {
    const dataset = (of: Component, name: string): object => ({
        label: of.title,
        data: fingerprintOf(of),
        borderColor: colour(name),
        backgroundColor: colour(`${name}-fill`),
        borderWidth: 2,
        pointRadius: 2.5,
        pointBackgroundColor: colour(name),
        spanGaps: false, // no line across an n/a
    });
    const values = FINGERPRINT.map((metric, i) => `${metric.short} ${short(fingerprintOf(component)[i])}`).join(', ');
    box.show(`Fingerprint of ${component.title}: ${values}`, () => ({
        type: 'radar',
        data: {
            labels: FINGERPRINT.map((metric) => metric.short.split(' ')), // one word per line leaves room for the chart
            datasets: [dataset(component, 'curve'), ...(other ? [dataset(other, 'curve-other')] : [])] as never,
        },
        options: {
            scales: {
                r: {
                    min: 0,
                    max: 1,
                    ticks: { stepSize: 0.5, color: colour('muted'), backdropColor: 'transparent', font: { size: 10 } },
                    grid: { color: colour('line') },
                    angleLines: { color: colour('line') },
                    pointLabels: { color: colour('text'), font: { size: 11 } },
                },
            },
            plugins: { legend: legend(other !== null) },
        } as never,
    }));
}
