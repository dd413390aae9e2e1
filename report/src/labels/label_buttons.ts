import { h } from '../dom';
import { LABELS, type Label, type Labels } from './labels';

/**
 * The three labels as buttons for the component that `current` names: `choose` sets the one that was clicked, unless it
 * was set already and is removed. Returns the element and a function that refreshes it.
 */
export function labelButtons(
    labels: Labels,
    current: () => string,
    choose: (label: Label) => void,
): { element: HTMLElement; refresh: () => void } {
    const click = (label: Label): void => {
        if (labels.get(current()).label === label) labels.setLabel(current(), null);
        else choose(label);
    };
    const buttons = LABELS.map(({ label, key, sign, title }) =>
        h(
            'button',
            {
                type: 'button',
                class: `label-button label-${label}`,
                'aria-keyshortcuts': key,
                title: `${title} (key ${key.toUpperCase()})`,
                onclick: () => click(label),
            },
            h('span', { class: 'label-sign', 'aria-hidden': 'true' }, sign),
            title,
        ),
    );
    const refresh = (): void => {
        const set = labels.get(current()).label;
        LABELS.forEach(({ label }, i) => buttons[i].setAttribute('aria-pressed', String(label === set)));
    };
    labels.onChange(refresh);
    return { element: h('div', { class: 'label-buttons', role: 'group', 'aria-label': 'Label' }, ...buttons), refresh };
}
