import { h } from '../dom';
import type { View } from '../views/view';
import { dotAxis, roundEnd } from './dot_axis';
import { dotHint } from './dot_hint';
import { dotRow, runAddress } from './dot_row';
import { amplitudeUnit, FEWEST_FOR_OUTLIERS, type Group, type GroupComponent } from './group';

const MOST_NAMED = 6; // outliers beside a row; the others are named by their dots

function outlierNote({ runs }: Group): string {
    return runs.length < FEWEST_FOR_OUTLIERS
        ? `With fewer than ${FEWEST_FOR_OUTLIERS} runs, none is marked as an outlier.`
        : '\u25c6: outlier, more than 3.5 robust standard deviations from the median.';
}

/** The amplitudes of all runs: a row of dots per component, with the outliers named. */
export class AmplitudesView implements View {
    readonly element: HTMLElement;
    private readonly rows = h('div', { class: 'dot-rows' });
    private readonly hint = dotHint(this.rows);
    private own = false; // every component has its own scale

    constructor(private readonly group: Group) {
        const scale = h('input', {
            type: 'checkbox',
            onchange: () => {
                this.own = scale.checked;
                this.draw();
            },
        });
        this.element = h(
            'main',
            { class: 'view group-amplitudes' },
            h(
                'section',
                { class: 'panel' },
                h(
                    'div',
                    { class: 'panel-head' },
                    h('h2', {}, 'Amplitude of every component in every run'),
                    h('label', { class: 'switch' }, scale, 'Every component on its own scale'),
                ),
                h(
                    'p',
                    { class: 'chart-note' },
                    `Standard deviation of the course, in ${amplitudeUnit(group.plan)}. A dot is a run, the line the `
                        + `median. ${outlierNote(group)}`,
                    h(
                        'span',
                        { class: 'on-screen' },
                        ' Enter or a click opens the run; \u2190 \u2192 go from dot to dot.',
                    ),
                ),
                this.rows,
            ),
        );
        this.draw();
    }

    private draw(): void {
        const { components } = this.group;
        const largest = (shown: GroupComponent[]): number => Math.max(...shown.flatMap((each) => each.amplitudes));
        const common = roundEnd(largest(components));
        this.rows.replaceChildren(
            ...components.map((component) => this.row(component, this.own ? largest([component]) : common.end)),
            ...(this.own
                ? []
                : [h('div', { class: 'dot-line' }, h('span'), dotAxis(common.end, common.tick), h('span'))]),
            this.hint.element,
        );
    }

    private row(component: GroupComponent, most: number): HTMLElement {
        const outliers = this.group.runs.filter(({ index }) => component.outlying[index]);
        const more = outliers.length - MOST_NAMED;
        return h(
            'div',
            { class: 'dot-line' },
            h('a', { class: 'dot-title', href: `#/component/${component.name}` }, component.title),
            dotRow(this.group, component, most, this.hint),
            h(
                'span',
                { class: 'dot-outliers' },
                ...outliers
                    .slice(0, MOST_NAMED)
                    .map((run) => h('a', { href: runAddress(component, run) }, `\u25c6 ${run.name}`)),
                more > 0 && `and ${more} more`,
            ),
        );
    }
}
