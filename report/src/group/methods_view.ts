import { h } from '../dom';
import { methodsPanel } from '../views/methods_panel';
import type { View } from '../views/view';
import { leftOut } from './facts';
import type { Group } from './group';
import { methodsText, references } from './methods_text';

/** A paragraph to paste, the references, and how exact the numbers of this page are. */
export class MethodsView implements View {
    readonly element: HTMLElement;

    constructor(group: Group) {
        const notes = [
            'The group\u2019s maps are stored in this file rounded to the decimals shown. The maps of the runs are '
                + 'rounded to steps of 0.2, or wider ones where a value exceeds 25.4, so that more of them fit; '
                + 'their files are exact.',
            'z of a run\u2019s map comes from an ordinary regression without a model of temporal autocorrelation: it is '
                + 'meant for display. Compare runs with the effect maps.',
            leftOut(group),
        ];
        this.element = h(
            'main',
            { class: 'view methods' },
            methodsPanel(methodsText(group), references(group)),
            h(
                'section',
                { class: 'panel' },
                h('h2', {}, 'The numbers of this page'),
                ...notes.map((note) => note && h('p', {}, note)),
            ),
        );
    }
}
