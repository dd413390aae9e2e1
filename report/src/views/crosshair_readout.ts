import { toMm, type Vector } from '../data/affine';
import { type ComponentMap, NO_VALUE } from '../data/component_map';
import type { Run } from '../data/run';
import { h } from '../dom';
import { fixed } from '../numbers';

/** The value of a map at a voxel, equal to the map file's to the decimals shown. */
export function valueText(run: Run, map: ComponentMap, voxel: Vector): string {
    const inside = run.insideOf[run.grid.indexOf(voxel)];
    if (inside < 0) return 'outside the mask';
    const stored = map.values[inside];
    return stored === NO_VALUE ? 'n/a' : fixed(stored * map.scale, map.decimals);
}

/** The position of the crosshair and the value of the map there. */
export function crosshairReadout(run: Run, map: ComponentMap, voxel: Vector, peak: () => void): HTMLElement {
    const [x, y, z] = toMm(run.grid.affine, voxel).map((value) => fixed(value, 1));
    const field = (name: string, value: string, id: string): HTMLElement =>
        h('div', { class: 'readout-field' }, h('dt', {}, name), h('dd', { 'data-readout': id }, value));
    return h(
        'div',
        { class: 'readout' },
        h(
            'dl',
            { 'aria-live': 'polite' },
            run.grid.oriented && field('Position (mm)', `x ${x}  y ${y}  z ${z}`, 'mm'),
            field('Voxel (from 0)', voxel.join(', '), 'voxel'),
            field('Map value (z)', valueText(run, map, voxel), 'value'),
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
