import { toMm, type Vector } from '../data/affine';
import type { Brain } from '../data/brain';
import { type ComponentMap, NO_VALUE } from '../data/component_map';
import { h } from '../dom';
import { fixed } from '../numbers';

/** The value of a map at a voxel, equal to the map file's to the decimals shown. */
export function valueText(brain: Brain, map: ComponentMap, voxel: Vector): string {
    const inside = brain.insideOf[brain.grid.indexOf(voxel)];
    if (inside < 0) return 'outside the mask';
    const stored = map.values[inside];
    return stored === NO_VALUE ? 'n/a' : fixed(stored * map.scale, map.decimals);
}

/** The position of the crosshair and the value of the map there. */
export function crosshairReadout(brain: Brain, map: ComponentMap, voxel: Vector, peak: () => void): HTMLElement {
    const [x, y, z] = toMm(brain.grid.affine, voxel).map((value) => fixed(value, 1));
    const field = (name: string, value: string, id: string): HTMLElement =>
        h('div', { class: 'readout-field' }, h('dt', {}, name), h('dd', { 'data-readout': id }, value));
    return h(
        'div',
        { class: 'readout' },
        h(
            'dl',
            { 'aria-live': 'polite' },
            brain.grid.oriented && field('Position (mm)', `x ${x}  y ${y}  z ${z}`, 'mm'),
            field('Voxel (from 0)', voxel.join(', '), 'voxel'),
            field('Map value (z)', valueText(brain, map, voxel), 'value'),
        ),
        h(
            'button',
            {
                type: 'button',
                class: 'button',
                'data-action': 'peak',
                onclick: peak,
                title: 'Go to the peak of the map (key P)',
            },
            'Peak',
        ),
    );
}
