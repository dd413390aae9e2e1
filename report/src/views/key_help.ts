import { h } from '../dom';

const KEYS = [
    ['S N U', 'label: signal, noise, unsure; in the gallery, of the card with the focus'],
    ['Z', 'take back the last label'],
    ['\u2190 \u2192', 'previous and next component'],
    ['\u2191 \u2193', 'slices of the plane used last'],
    ['P', 'go to the peak of the map'],
    ['X', 'hide or show the crosshair'],
    ['F', 'flip the sign'],
    ['Tab, Enter', 'in the gallery: to the next card, open it'],
    ['Esc', 'back to all components'],
    ['?', 'this list'],
];

let dialog: HTMLDialogElement | null = null;

/** Shows all keys. */
export function showKeyHelp(): void {
    if (!dialog) {
        const rows = KEYS.flatMap(([key, what]) => [h('dt', {}, h('kbd', {}, key)), h('dd', {}, what)]);
        const close = h('button', { class: 'button', onclick: () => dialog?.close() }, 'Close');
        dialog = h(
            'dialog',
            { class: 'key-help', 'aria-label': 'Keys' },
            h('h2', {}, 'Keys'),
            h('dl', {}, ...rows),
            close,
        );
        document.body.append(dialog);
    }
    dialog.showModal();
}
