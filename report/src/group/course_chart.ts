import { axis, type ChartBox } from '../charts/chart';
import { timeChart } from '../charts/time_chart';

/** The course of a component in a run over seconds, mean 0 and variance 1. */
export function showCourse(box: ChartBox, title: string, course: number[], trSeconds: number): void {
    const seconds = (course.length - 1) * trSeconds;
    const curve = { label: title, values: course, trSeconds, colour: 'curve', width: 1.6 };
    box.show(`Course of ${title} over ${seconds.toFixed(0)} seconds`, () => timeChart([curve], seconds, axis('SD')));
}
