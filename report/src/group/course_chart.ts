import { axis, type ChartBox, legend, wholeAxis } from '../charts/chart';
import { colour } from '../theme';

/** The course of a component in a run over seconds, mean 0 and variance 1. */
export function showCourse(box: ChartBox, title: string, course: number[], trSeconds: number): void {
    const seconds = (course.length - 1) * trSeconds;
    box.show(`Course of ${title} over ${seconds.toFixed(0)} seconds`, () => ({
        type: 'line',
        data: {
            datasets: [
                {
                    label: title,
                    data: course.map((y, t) => ({ x: Number((t * trSeconds).toFixed(3)), y })),
                    borderColor: colour('curve'),
                    borderWidth: 1.6,
                    pointRadius: 0,
                    pointHitRadius: 6,
                    tension: 0,
                },
            ] as never,
        },
        options: {
            parsing: false,
            normalized: true,
            interaction: { mode: 'index', intersect: false },
            scales: {
                x: { ...wholeAxis('Time (s)'), type: 'linear', min: 0, max: seconds },
                y: axis('SD'),
            },
            plugins: {
                legend: legend(false),
                tooltip: { callbacks: { title: (items: { parsed: { x: number } }[]) => `${items[0].parsed.x} s` } },
            },
        } as never,
    }));
}
