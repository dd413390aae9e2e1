import { h } from '../dom';

/** A paragraph to paste into a paper, with its references. */
export function methodsPanel(text: string, references: string[]): HTMLElement {
    const paragraph = h('p', { class: 'methods-text', id: 'methods-text' }, text);
    const done = h('span', { class: 'label-message', role: 'status' });
    const copy = async (): Promise<void> => {
        try {
            await navigator.clipboard.writeText(`${text}\n\n${references.join('\n')}\n`);
            done.textContent = 'Copied with the references.';
        } catch {
            getSelection()?.selectAllChildren(paragraph); // copying is not allowed: select the text instead
            done.textContent = 'Selected: copy it with Ctrl+C.';
        }
    };
    return h(
        'section',
        { class: 'panel' },
        h('h2', {}, 'Methods'),
        paragraph,
        h(
            'p',
            { class: 'methods-actions' },
            h('button', { type: 'button', class: 'button', onclick: () => void copy() }, 'Copy'),
            done,
        ),
        h('h3', {}, 'References'),
        h('ul', { class: 'references' }, ...references.map((reference) => h('li', {}, reference))),
    );
}
