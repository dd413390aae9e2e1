import type { RemovedPart } from '../data/denoising';
import type { Run } from '../data/run';
import { h } from '../dom';
import { short } from '../numbers';

const NAMES: Record<string, string> = { confounds: 'Confounds', high_pass: 'High-pass filter' };

function nameCell(run: Run, part: RemovedPart): HTMLElement {
    const component = run.components.find(({ name }) => name === part.name);
    if (!component) return h('th', { scope: 'row' }, NAMES[part.name] ?? part.name);
    return h(
        'th',
        { scope: 'row' },
        h('a', { href: `#/component/${part.name}` }, component.title),
        h('span', { class: 'component-name' }, ` ${part.name}`),
    );
}

function labelCell({ removed, label }: RemovedPart): HTMLElement {
    if (label === '') return h('td', {}, removed ? '' : 'no label');
    return h('td', {}, h('span', { class: `chip chip-${label}` }, label));
}

/** What was removed with the variance that went with it, largest first, or what was kept; null if nothing was. */
export function removedTable(run: Run, parts: RemovedPart[], removed: boolean): HTMLElement | null {
    const shown = parts.filter((part) => part.removed === removed);
    if (shown.length === 0) return null;
    if (removed) shown.sort((a, b) => (b.percent ?? 0) - (a.percent ?? 0));
    const heads = removed ? ['Removed', 'Label', 'Reason', 'Variance'] : ['Kept', 'Label', 'Note'];
    return h(
        'table',
        { class: `fates ${removed ? 'fates-removed' : 'fates-kept'}` },
        h('thead', {}, h('tr', {}, ...heads.map((head) => h('th', { scope: 'col' }, head)))),
        h(
            'tbody',
            {},
            ...shown.map((part) =>
                h(
                    'tr',
                    { 'data-part': part.name },
                    nameCell(run, part),
                    labelCell(part),
                    h('td', {}, part.reason),
                    removed && h('td', { class: 'number' }, `${short(part.percent ?? NaN)} %`),
                ),
            ),
        ),
    );
}
