import { h } from '../dom';
import { short, stabilityText } from '../numbers';
import { amplitudeText } from './amplitude_text';
import type { Group, GroupComponent, GroupRun } from './group';

type Row = [title: string, value: string, about?: string];

function table(caption: string, rows: Row[]): HTMLElement {
    return h(
        'table',
        { class: 'parameters' },
        h('thead', {}, h('tr', {}, h('th', { scope: 'col' }, caption), h('th', { scope: 'col' }, ''))),
        h(
            'tbody',
            {},
            ...rows.map(([title, value, about = '']) =>
                h('tr', {}, h('th', { scope: 'row', title: about || null }, title), h('td', {}, value)),
            ),
        ),
    );
}

/** What the run's own course and map say about the component. */
export function runTable(group: Group, component: GroupComponent, run: GroupRun): HTMLElement {
    const { index } = component;
    const rows: Row[] = [
        ['Amplitude', amplitudeText(group, component.amplitudes[run.index])],
        ['Median of all runs', amplitudeText(group, component.median)],
        ['Similarity to the group\u2019s map (r)', short(run.similarity[index]), 'Of the effect map, over the mask'],
        ['Autocorrelation of the course, lag 1', short(run.lag1[index])],
        ['Variance explained by all components', `${short(run.explainedPercent)} %`],
    ];
    return table('In this run', rows);
}

/** Stability and spatial values of the group's component. */
export function spatialTable(component: GroupComponent): HTMLElement {
    const stability: Row[] = Number.isNaN(component.stability)
        ? []
        : [['Stability index Iq', stabilityText(component.stability), 'Over the repeats']];
    const spatial = component.spatial.map(({ title, value, about }): Row => [title, short(value), about]);
    return table('In the group', [...stability, ...spatial]);
}
