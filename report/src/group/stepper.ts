import { h } from '../dom';

/** A choice from a list with buttons for the previous and the next one. */
export class Stepper {
    readonly element: HTMLElement;
    readonly select: HTMLSelectElement;

    /** `what`: "component"; `keys`: of the two buttons, for their titles. */
    constructor(
        what: string,
        keys: [string, string],
        options: string[],
        private readonly choose: (index: number) => void,
    ) {
        this.select = h(
            'select',
            { 'aria-label': `The ${what} shown`, onchange: () => choose(this.select.selectedIndex) },
            ...options.map((text) => h('option', {}, text)),
        );
        const button = (text: string, name: string, key: string, by: number): HTMLElement =>
            h(
                'button',
                {
                    type: 'button',
                    class: 'button button-icon',
                    'aria-label': `${name} ${what}`,
                    title: `Key ${key}`,
                    onclick: () => this.step(by),
                },
                text,
            );
        this.element = h(
            'div',
            { class: 'stepper' },
            button('\u2039', 'Previous', keys[0], -1),
            this.select,
            button('\u203a', 'Next', keys[1], 1),
        );
    }

    set(index: number): void {
        this.select.selectedIndex = index;
    }

    /** From the last one on to the first. */
    step(by: number): void {
        const count = this.select.length;
        this.choose((this.select.selectedIndex + by + count) % count);
    }
}
