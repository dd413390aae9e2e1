import type { Decomposition } from '../data/decomposition';
import { colour } from '../theme';
import { axis, type ChartBox, legend } from './chart';

/** The eigenvalues of the temporal covariance by rank, on a logarithmic axis, with the kept range shaded. */
export function showEigenvalues(box: ChartBox, facts: Decomposition): void {
    const { FirstEigenvalue: first, LastEigenvalue: last } = facts.Settings;
    const points = facts.Eigenvalues.map((y, i) => ({ x: i + 1, y })).filter(({ y }) => y > 0);
    const kept = { from: first - 0.5, to: last + 0.5, label: 'kept', beside: last - first < points.length / 6 };
    box.show(
        `${points.length} eigenvalues in descending order; ranks ${first} to ${last} are kept`,
        () => ({
            type: 'line',
            data: {
                datasets: [
                    {
                        label: 'Eigenvalue',
                        data: points,
                        borderColor: colour('curve'),
                        borderWidth: 1.6,
                        pointRadius: points.length > 60 ? 0 : 2,
                        pointHitRadius: 6,
                        pointBackgroundColor: colour('curve'),
                    },
                ] as never,
            },
            options: {
                parsing: false,
                interaction: { mode: 'index', intersect: false },
                scales: {
                    x: {
                        ...axis('Rank'),
                        type: 'linear',
                        min: 0.5,
                        max: points.length + 0.5,
                        ticks: { color: colour('muted'), includeBounds: false, precision: 0 },
                    },
                    y: {
                        ...axis('Eigenvalue (log scale)'),
                        type: 'logarithmic',
                        ticks: { color: colour('muted'), maxTicksLimit: 6, callback: exponent },
                    },
                },
                plugins: {
                    legend: legend(false),
                    tooltip: {
                        callbacks: { title: (items: { parsed: { x: number } }[]) => `Rank ${items[0].parsed.x}` },
                    },
                },
            } as never,
        }),
        [kept],
    );
}

// Labels powers of ten only; more labels would crowd the axis.
function exponent(value: number | string): string {
    const power = Math.log10(Number(value));
    return Math.abs(power - Math.round(power)) < 1e-6 ? `1e${Math.round(power)}` : '';
}
