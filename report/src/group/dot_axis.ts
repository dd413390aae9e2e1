import { h } from '../dom';
import { short } from '../numbers';

/** A round number of at least `value`, and the distance of the ticks up to it. */
export function roundEnd(value: number): { end: number; tick: number } {
    const unit = 10 ** Math.floor(Math.log10(value || 1));
    const tick = [0.2, 0.5, 1, 2].map((share) => share * unit).find((distance) => value / distance <= 5) ?? 2 * unit;
    return { end: Math.ceil(value / tick - 1e-9) * tick, tick };
}

/** The ticks below rows of dots. */
export function dotAxis(most: number, tick: number): HTMLElement {
    const ticks = Array.from({ length: Math.round(most / tick) + 1 }, (_, i) => {
        const mark = h('span', {}, short(i * tick));
        mark.style.left = `${(100 * i * tick) / most}%`;
        return mark;
    });
    return h('div', { class: 'dot-axis', 'aria-hidden': 'true' }, ...ticks);
}
