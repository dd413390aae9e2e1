import { COLOUR_MAPS } from '../brain/colour_maps';
import type { Look } from '../brain/look';
import { h } from '../dom';
import { lookSwitch } from './look_switch';

/**
 * Threshold, upper end, opacity and colours of the maps; calls back at every movement of a slider. `refresh` takes over
 * changes made elsewhere. `oriented`: left and right are known.
 */
export function lookControls(
    look: Look,
    highest: number,
    oriented: boolean,
    changed: () => void,
): { element: HTMLElement; refresh: () => void } {
    const slider = (
        id: string,
        title: string,
        min: number,
        max: number,
        step: number,
        value: number,
        set: (value: number) => void,
    ): HTMLElement => {
        const decimals = step < 0.1 ? 2 : step < 1 ? 1 : 0;
        const output = h('output', { for: id }, value.toFixed(decimals));
        const input = h('input', {
            type: 'range',
            id,
            min,
            max,
            step,
            value,
            oninput: () => {
                output.textContent = input.valueAsNumber.toFixed(decimals);
                set(input.valueAsNumber);
                changed();
            },
        });
        return h('div', { class: 'slider' }, h('label', { for: id }, title), input, output);
    };
    const colours = h(
        'select',
        {
            id: 'colour-map',
            onchange: () => {
                look.colourMap = colours.value;
                changed();
            },
        },
        ...COLOUR_MAPS.map((map) => h('option', { value: map.id }, map.title)),
    );
    const ceiling = h('input', {
        type: 'number',
        id: 'ceiling',
        min: 0,
        step: 0.5,
        placeholder: 'auto',
        oninput: () => {
            look.ceiling = ceiling.value === '' ? null : ceiling.valueAsNumber;
            changed();
        },
    });
    const switches = [
        lookSwitch(look, 'smooth', 'Interpolate', changed),
        ...(oriented ? [lookSwitch(look, 'radiological', 'Radiological view', changed)] : []),
        lookSwitch(look, 'render', '3D', changed),
    ];
    const element = h(
        'div',
        { class: 'look-controls' },
        slider(
            'threshold',
            'Threshold |z|',
            0,
            Math.max(look.threshold, Math.min(15, Math.max(5, Math.ceil(highest)))),
            0.1,
            look.threshold,
            (value) => {
                look.threshold = value;
            },
        ),
        slider('fewest', 'Smallest cluster', 1, 100, 1, look.fewest, (value) => {
            look.fewest = value;
        }),
        slider('opacity', 'Opacity', 0, 1, 0.05, look.opacity, (value) => {
            look.opacity = value;
        }),
        h('div', { class: 'control' }, h('label', { for: 'ceiling' }, 'Colours up to |z|'), ceiling),
        h('div', { class: 'control' }, h('label', { for: 'colour-map' }, 'Colours'), colours),
        ...switches.map((each) => each.element),
    );
    return { element, refresh: () => switches.forEach((each) => each.refresh()) };
}
