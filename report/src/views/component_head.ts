import type { Component, Run } from '../data/run';
import { h } from '../dom';
import { advanceSwitch } from '../labels/advance';
import { labelButtons } from '../labels/label_buttons';
import type { Label, Labels } from '../labels/labels';

/** Name, previous and next, label, note, and the choice of a second component. */
export class ComponentHead {
    readonly element: HTMLElement;
    onStep: (by: 1 | -1) => void = () => {};
    onLabel: (label: Label) => void = () => {};
    /** `match`: always with the component that the one shown matches. */
    onCompare: (other: Component | 'match' | null) => void = () => {};
    private component: Component;
    private readonly title = h('h2', { tabindex: -1 });
    private readonly name = h('span', { class: 'component-name' });
    private readonly note: HTMLInputElement;
    private readonly noteText = h('p', { class: 'note-text' });
    private readonly progress = h('span', { class: 'label-progress', role: 'status' });
    private readonly compare: HTMLSelectElement;
    private readonly buttons: { element: HTMLElement; refresh: () => void };

    constructor(
        run: Run,
        private readonly labels: Labels,
    ) {
        const all = [...run.components, ...(run.compared?.components ?? [])];
        this.component = run.components[0];
        this.buttons = labelButtons(
            labels,
            () => this.component.name,
            (label) => this.onLabel(label),
        );
        this.note = h('input', {
            type: 'text',
            id: 'note',
            class: 'note',
            placeholder: 'Note',
            'aria-label': 'Note',
            oninput: () => labels.setNote(this.component.name, this.note.value),
        });
        this.compare = h(
            'select',
            {
                id: 'compare',
                onchange: () => {
                    const { value } = this.compare;
                    this.onCompare(value === 'match' ? value : value === '' ? null : all[Number(value)]);
                },
            },
            h('option', { value: '' }, 'Compare with \u2026'),
            run.compared && h('option', { value: 'match' }, `Compare with its match in ${run.compared.folder}`),
            ...all.map((component) => h('option', { value: component.index }, `Compare with ${component.title}`)),
        );
        if (run.compared) this.compare.value = 'match';
        this.compare.setAttribute('aria-label', 'Compare with another component');
        this.element = h(
            'div',
            { class: 'component-head' },
            h('a', { class: 'button', href: '#/' }, '\u2190 All components'),
            h(
                'div',
                { class: 'component-step' },
                h(
                    'button',
                    {
                        type: 'button',
                        class: 'button button-icon',
                        'aria-label': 'Previous component',
                        title: 'Left arrow',
                        onclick: () => this.onStep(-1),
                    },
                    '\u2039',
                ),
                h('div', { class: 'component-title' }, this.title, this.name),
                h(
                    'button',
                    {
                        type: 'button',
                        class: 'button button-icon',
                        'aria-label': 'Next component',
                        title: 'Right arrow',
                        onclick: () => this.onStep(1),
                    },
                    '\u203a',
                ),
            ),
            this.buttons.element,
            advanceSwitch(),
            this.progress,
            this.note,
            this.noteText,
            this.compare,
        );
        labels.onChange(() => this.showNote());
    }

    /** Moves the keyboard focus here when the reader opens the view. */
    focus(): void {
        this.title.focus({ preventScroll: true });
    }

    show(component: Component, position: string): void {
        this.component = component;
        this.title.textContent = component.title;
        for (const option of this.compare.options) option.disabled = option.value === String(component.index);
        this.name.textContent = `${component.name} \u00b7 ${position}`;
        this.note.value = this.labels.get(component.name).note;
        this.showNote();
        this.buttons.refresh();
    }

    private showNote(): void {
        const { note } = this.labels.get(this.component.name);
        if (document.activeElement !== this.note) this.note.value = note;
        this.noteText.textContent = note;
        this.progress.textContent = this.labels.progress;
    }
}
