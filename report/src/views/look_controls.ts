import { COLOUR_MAPS } from '../brain/colour_maps';
import type { Look } from '../brain/look';
import { h } from '../dom';

/** Threshold, ceiling, opacity and colours of the maps; calls back with every movement of a slider. */
export function lookControls(look: Look, highest: number, changed: () => void): HTMLElement {
    const slider = (id: string, title: string, min: number, max: number, step: number, value: number,
        set: (value: number) => void): HTMLElement => {
        const output = h('output', { for: id }, value.toFixed(step < 0.1 ? 2 : 1));
        const input = h('input', { type: 'range', id, min, max, step, value, oninput: () => {
            output.textContent = input.valueAsNumber.toFixed(step < 0.1 ? 2 : 1);
            set(input.valueAsNumber);
            changed();
        } });
        return h('div', { class: 'slider' }, h('label', { for: id }, title), input, output);
    };
    const switched = (id: string, title: string, on: boolean, set: (on: boolean) => void): HTMLElement => {
        const input = h('input', { type: 'checkbox', id, checked: on, onchange: () => {
            set(input.checked);
            changed();
        } });
        return h('label', { class: `switch switch-${id}`, for: id }, input, title);
    };
    const colours = h('select', { id: 'colour-map', onchange: () => {
        look.colourMap = colours.value;
        changed();
    } }, ...COLOUR_MAPS.map((map) => h('option', { value: map.id }, map.title)));
    const ceiling = h('input', { type: 'number', id: 'ceiling', min: 0, step: 0.5, placeholder: 'auto', oninput: () => {
        look.ceiling = ceiling.value === '' ? null : ceiling.valueAsNumber;
        changed();
    } });
    return h('div', { class: 'look-controls' },
        slider('threshold', 'Threshold |z|', 0, Math.min(15, Math.max(5, Math.ceil(highest))), 0.1, look.threshold,
            (value) => { look.threshold = value; }),
        slider('opacity', 'Opacity', 0, 1, 0.05, look.opacity, (value) => { look.opacity = value; }),
        h('div', { class: 'control' }, h('label', { for: 'ceiling' }, 'Colours up to |z|'), ceiling),
        h('div', { class: 'control' }, h('label', { for: 'colour-map' }, 'Colours'), colours),
        switched('smooth', 'Smooth', look.smooth, (on) => { look.smooth = on; }),
        switched('radiological', 'Left on the right', look.radiological, (on) => { look.radiological = on; }),
        switched('render', '3D', look.render, (on) => { look.render = on; }));
}
