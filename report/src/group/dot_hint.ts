import { h } from '../dom';
import type { DotHints } from './dot_row';

const EDGE = 4; // pixels from the sides of the place

/** The name of a dot above it, within `place`, which must be positioned. */
export function dotHint(place: HTMLElement): DotHints {
    const hint = h('div', { class: 'dot-hint', hidden: true, 'aria-hidden': 'true' });
    place.append(hint);
    return {
        element: hint,
        show(dot, text) {
            hint.textContent = text;
            hint.hidden = false;
            const [box, own] = [dot.getBoundingClientRect(), place.getBoundingClientRect()];
            const middle = box.left + box.width / 2 - own.left - hint.offsetWidth / 2;
            hint.style.left = `${Math.max(EDGE, Math.min(middle, own.width - hint.offsetWidth - EDGE))}px`;
            hint.style.top = `${box.top - own.top - hint.offsetHeight - 5}px`;
        },
        hide() {
            hint.hidden = true;
        },
    };
}
