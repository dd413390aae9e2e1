import { h } from '../dom';
import { amplitudeText } from './amplitude_text';
import type { Group, GroupComponent, GroupRun } from './group';

/** Where the dots of a component may be shown with their names. */
export interface DotHints {
    readonly element: HTMLElement;
    show(dot: HTMLElement, text: string): void;
    hide(): void;
}

/** The address of a component in a run. */
export function runAddress(component: GroupComponent, run: GroupRun): string {
    return `#/component/${component.name}/${encodeURIComponent(run.name)}`;
}

function nameOf(group: Group, component: GroupComponent, run: GroupRun): string {
    const value = amplitudeText(group, component.amplitudes[run.index]);
    return `${run.name}: ${value}${component.outlying[run.index] ? ', an outlier' : ''}`;
}

/**
 * The amplitudes of a component as dots on a line from 0 to `most`, each a link to the component in that run. Outliers
 * are diamonds. One dot takes part in the order of the Tab key; the arrow keys go on from there by amplitude.
 */
export function dotRow(
    group: Group,
    component: GroupComponent,
    most: number,
    hints: DotHints,
    current: GroupRun | null = null,
): HTMLElement {
    const order = [...group.runs].sort((a, b) => component.amplitudes[a.index] - component.amplitudes[b.index]);
    const left = (value: number): string => `${((100 * value) / most).toFixed(2)}%`;
    const dots = order.map((run, rank) => {
        const text = nameOf(group, component, run);
        const dot = h('a', {
            class: `dot${component.outlying[run.index] ? ' dot-outlier' : ''}${run === current ? ' dot-current' : ''}`,
            href: runAddress(component, run),
            'aria-label': text,
            'aria-current': run === current ? 'true' : null,
            'data-run': run.name,
            tabindex: -1,
            onmouseenter: () => hints.show(dot, text),
            onmouseleave: () => hints.hide(),
            onfocus: () => hints.show(dot, text),
            onblur: () => hints.hide(),
        });
        dot.style.left = left(component.amplitudes[run.index]);
        dot.style.top = `${20 + 60 * ((rank * 0.618) % 1)}%`; // spread, so that equal amplitudes do not hide each other
        return dot;
    });
    const first = dots.find((dot) => dot.classList.contains('dot-current')) ?? dots[0];
    if (first) first.tabIndex = 0;
    const middle = h('span', { class: 'dot-median' });
    middle.style.left = left(component.median);
    return h(
        'div',
        {
            class: 'dot-row',
            role: 'group',
            'aria-label': `Amplitudes of ${component.title}, ascending`,
            'data-component': component.name,
            onkeydown: (event) => step(event as KeyboardEvent, dots),
        },
        middle,
        ...dots,
    );
}

function step(event: KeyboardEvent, dots: HTMLElement[]): void {
    const at = dots.indexOf(event.target as HTMLElement);
    const next = { ArrowLeft: at - 1, ArrowRight: at + 1, Home: 0, End: dots.length - 1 }[event.key];
    if (at < 0 || next === undefined) return;
    event.preventDefault();
    event.stopPropagation();
    const dot = dots[Math.min(Math.max(next, 0), dots.length - 1)];
    dots[at].tabIndex = -1;
    dot.tabIndex = 0;
    dot.focus();
}
