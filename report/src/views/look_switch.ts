import type { Look } from '../brain/look';
import { h } from '../dom';

/** A checkbox for one of the settings; `refresh` takes over a change made by another one. */
export function lookSwitch(
    look: Look,
    id: 'smooth' | 'radiological' | 'render',
    title: string,
    changed: () => void,
): { element: HTMLElement; refresh: () => void } {
    const input = h('input', {
        type: 'checkbox',
        onchange: () => {
            look[id] = input.checked;
            changed();
        },
    });
    const refresh = (): void => {
        input.checked = look[id];
    };
    refresh();
    return { element: h('label', { class: `switch switch-${id}` }, input, title), refresh };
}
