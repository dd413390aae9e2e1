import type { Look } from '../brain/look';
import { ChartBox } from '../charts/chart';
import { showFingerprint } from '../charts/fingerprint_chart';
import { showSpectrum } from '../charts/spectrum_chart';
import { showTimeCourse } from '../charts/time_course_chart';
import { bandsFor } from '../data/bands';
import type { Component, Run } from '../data/run';
import { append, h } from '../dom';
import { advances } from '../labels/advance';
import { LABELS, type Label, type Labels } from '../labels/labels';
import { BrainPair } from './brain_pair';
import { ComponentHead } from './component_head';
import { lookControls } from './look_controls';
import { fingerprintTable, lag1Note, matchTable, rescaledNote } from './parameter_table';
import type { View } from './view';

/** Everything about one component, alone or beside a second one. */
export class ComponentView implements View {
    readonly element: HTMLElement;
    private readonly head: ComponentHead;
    private readonly brains: BrainPair;
    private readonly controls: ReturnType<typeof lookControls>;
    private readonly course = new ChartBox('course', [660, 120]);
    private readonly spectrum = new ChartBox('spectrum', [310, 240]);
    private readonly spectrumNote = h('p', { class: 'chart-note' });
    private readonly fingerprint = new ChartBox('fingerprint', [310, 270]);
    private readonly tables = h('div', { class: 'tables' });
    private component: Component | null = null;
    private chosen: Component | 'match' | null; // the one to compare with
    private position = 0; // of the component in the gallery's order, when it was last there

    /** `neighbours`: the components in the gallery's order; `open`: goes to another one. */
    constructor(
        private readonly run: Run,
        private readonly labels: Labels,
        private readonly look: Look,
        private readonly neighbours: () => Component[],
        private readonly open: (component: Component) => void,
    ) {
        const highest = Math.max(...run.components.map((c) => Math.max(Math.abs(c.lowest), Math.abs(c.highest))));
        this.chosen = run.compared ? 'match' : null;
        this.head = new ComponentHead(run, labels);
        this.head.onStep = (by) => this.step(by);
        this.head.onLabel = (label) => this.label(label);
        this.head.onCompare = (other) => {
            this.chosen = other;
            void this.draw();
        };
        this.brains = new BrainPair(run, look);
        run.signs.onChange((component) => {
            if (component === this.component || component === this.compared()) void this.draw();
        });
        this.controls = lookControls(look, highest, run.grid.oriented, () => this.brains.lookChanged());
        const figure = (title: string, ...content: HTMLElement[]): HTMLElement =>
            h('figure', { class: 'panel' }, h('figcaption', {}, title), ...content);
        this.element = h(
            'main',
            { class: 'view component' },
            this.head.element,
            h(
                'section',
                { class: 'panel brain-panel', 'aria-label': 'Map' },
                this.brains.element,
                this.controls.element,
                h(
                    'p',
                    { class: 'chart-note sign-note' },
                    'The sign of a component is arbitrary: shown with the longer tail of the map positive, unless flipped; the '
                        + 'files keep their sign.',
                    run.compared && ` The match in ${run.compared.folder} is shown with the sign that agrees.`,
                ),
            ),
            h('div', { class: 'component-side' }, figure('Fingerprint', this.fingerprint.element, this.tables)),
            h(
                'div',
                { class: 'component-charts' },
                figure('Time course', this.course.element),
                figure('Power spectrum', this.spectrum.element, this.spectrumNote),
            ),
            h(
                'p',
                { class: 'keys' },
                'Keys: ',
                ...['S N U label', 'Z undo', '\u2190 \u2192 component', '? all keys'].map((text) => h('kbd', {}, text)),
            ),
        );
    }

    /** Takes a component over; keys act on it from now on. It is drawn by `draw`. */
    present(component: Component): void {
        const list = this.neighbours();
        const at = list.indexOf(component);
        this.component = component;
        if (at >= 0) this.position = at;
        this.head.show(component, at < 0 ? 'not in the selection' : `${at + 1} of ${list.length}`);
    }

    enter(): void {
        scrollTo(0, 0);
        this.head.focus();
        this.controls.refresh();
    }

    key(event: KeyboardEvent): boolean {
        const label = LABELS.find(({ key }) => key === event.key.toLowerCase());
        if (event.key === 'ArrowLeft') this.step(-1);
        else if (event.key === 'ArrowRight') this.step(1);
        else if (event.key === 'ArrowUp') this.brains.moveSlice(1);
        else if (event.key === 'ArrowDown') this.brains.moveSlice(-1);
        else if (event.key.toLowerCase() === 'p') this.brains.goToPeak();
        else if (event.key.toLowerCase() === 'f' && this.component) this.run.signs.flip(this.component);
        else if (event.key.toLowerCase() === 'x') this.toggleCrosshair();
        else if (event.key.toLowerCase() === 'z') this.undo();
        else if (event.key === 'Escape') location.hash = '#/';
        else if (label) this.label(label.label);
        else return false;
        return true;
    }

    /** Draws the component; resolves when everything is drawn. */
    async draw(): Promise<void> {
        const { component, run } = this;
        if (!component) return;
        const compared = this.compared();
        showTimeCourse(this.course, run, component, compared);
        this.spectrumNote.textContent = showSpectrum(this.spectrum, bandsFor(run.trSeconds), component, compared);
        showFingerprint(this.fingerprint, component, compared);
        const shown = compared ? [component, compared] : [component];
        this.tables.replaceChildren();
        append(this.tables, [
            fingerprintTable(run, shown),
            rescaledNote(run, shown),
            lag1Note(shown),
            matchTable(run, shown),
        ]);
        await this.brains.show(component, compared);
    }

    private compared(): Component | null {
        if (this.chosen === 'match') return this.run.compared?.partners.get(this.component!)?.component ?? null;
        return this.chosen === this.component ? null : this.chosen; // stepping may have reached that one
    }

    // The next component is found before the label, which may remove this one from the selection.
    private label(label: Label): void {
        if (!this.component) return;
        const list = this.neighbours();
        const next = this.labels.nextWithout(
            list.map(({ name }) => name),
            this.component.name,
        );
        this.labels.setLabel(this.component.name, label);
        if (next !== null && advances()) this.open(list.find(({ name }) => name === next)!);
    }

    private undo(): void {
        const name = this.labels.undo();
        const component = this.run.components.find((candidate) => candidate.name === name);
        if (component) this.open(component);
    }

    private toggleCrosshair(): void {
        this.look.crosshair = !this.look.crosshair;
        this.brains.lookChanged();
    }

    // When a new label has removed the component from the selection, the next one has taken its place.
    private step(by: 1 | -1): void {
        const list = this.neighbours();
        const own = list.indexOf(this.component!);
        const next = own >= 0 ? own + by : this.position + (by > 0 ? 0 : -1);
        if (list.length > 0) this.open(list[(next + list.length) % list.length]);
    }
}
