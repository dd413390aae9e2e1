import { h } from '../dom';

const KEY = 'znica-report-advance';
let on = true;
try {
    on = localStorage.getItem(KEY) !== 'off';
} catch {
    // storage may be disabled
}

/** Whether a label moves on to the next component without one. */
export function advances(): boolean {
    return on;
}

export function advanceSwitch(): HTMLElement {
    const input = h('input', {
        type: 'checkbox',
        onchange: () => {
            on = input.checked;
            try {
                localStorage.setItem(KEY, on ? 'on' : 'off');
            } catch {
                // the choice lasts until the page is closed
            }
        },
    });
    input.checked = on;
    return h(
        'label',
        { class: 'switch', title: 'After a label, by key or by click, go to the next component without one' },
        input,
        'Advance after labelling',
    );
}
