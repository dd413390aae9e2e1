import type { Look } from '../brain/look';
import { ChartBox } from '../charts/chart';
import type { MapEntry } from '../data/map_source';
import { h } from '../dom';
import { BrainPair } from '../views/brain_pair';
import { lookControls } from '../views/look_controls';
import type { View } from '../views/view';
import { amplitudeText } from './amplitude_text';
import { showCourse } from './course_chart';
import { dotAxis, roundEnd } from './dot_axis';
import { dotHint } from './dot_hint';
import { dotRow } from './dot_row';
import { type Group, type GroupComponent, type GroupRun, runEntry } from './group';
import { runTable, spatialTable } from './number_tables';
import { Stepper } from './stepper';

/** A component in a run: the group's map beside the run's own, the course, the amplitude among those of all runs. */
export class RunView implements View {
    readonly element: HTMLElement;
    private readonly components: Stepper;
    private readonly runs: Stepper;
    private readonly title = h('h2', { class: 'run-title visually-hidden', tabindex: -1 });
    private readonly amplitude = h('span', { class: 'run-amplitude', role: 'status' });
    private readonly brains: BrainPair;
    private readonly controls: ReturnType<typeof lookControls>;
    private readonly missing = h('p', { class: 'chart-note run-missing' });
    private readonly course = new ChartBox('course', [660, 120]);
    private readonly dots = h('div', { class: 'dot-rows' });
    private readonly hint = dotHint(this.dots);
    private readonly numbers = h('div', { class: 'tables' });
    private readonly entries: MapEntry[]; // of the group's maps, as they are titled here
    private component: GroupComponent;
    private run: GroupRun;

    /** `open`: goes to another component or run. */
    constructor(
        private readonly group: Group,
        private readonly look: Look,
        open: (component: GroupComponent, run: GroupRun) => void,
    ) {
        [this.component] = group.components;
        [this.run] = group.runs;
        this.entries = group.components.map((each) => ({ ...each, title: `${each.title}, group` }));
        this.components = new Stepper(
            'component',
            ['\u2190', '\u2192'],
            group.components.map(({ title, name }) => `${title} \u00b7 ${name}`),
            (index) => open(group.components[index], this.run),
        );
        this.runs = new Stepper(
            'run',
            ['K', 'J'],
            group.runs.map(({ name }) => name),
            (index) => open(this.component, group.runs[index]),
        );
        this.brains = new BrainPair(group, look, false);
        group.signs.onChange(({ name }) => name === this.component.name && void this.draw());
        const highest = Math.max(...group.components.flatMap(({ lowest, highest: high }) => [-lowest, high]));
        this.controls = lookControls(look, highest, group.grid.oriented, () => this.brains.lookChanged());
        this.element = this.page();
    }

    private page(): HTMLElement {
        const figure = (title: string, ...content: HTMLElement[]): HTMLElement =>
            h('figure', { class: 'panel' }, h('figcaption', {}, title), ...content);
        return h(
            'main',
            { class: 'view component' },
            h(
                'div',
                { class: 'component-head' },
                this.title,
                h('a', { class: 'button', href: '#/' }, '\u2190 All components'),
                this.components.element,
                this.runs.element,
                this.amplitude,
            ),
            h(
                'section',
                { class: 'panel brain-panel', 'aria-label': 'Maps' },
                this.brains.element,
                this.controls.element,
                this.missing,
                h(
                    'p',
                    { class: 'chart-note sign-note' },
                    'Left: the group\u2019s map, z over the voxels. Right: the run\u2019s own map from dual regression, '
                        + 'z of the regression, rounded; every map has its own colour scale. The sign of a component is '
                        + 'arbitrary: group, runs and courses are flipped together.',
                ),
            ),
            h('div', { class: 'component-side' }, figure('Numbers', this.numbers)),
            h(
                'div',
                { class: 'component-charts run-charts' },
                figure('Course in this run', this.course.element),
                figure('Amplitude among all runs', this.dots),
            ),
            h(
                'p',
                { class: 'keys' },
                'Keys: ',
                ...[
                    '\u2190 \u2192 component',
                    'K J run',
                    '\u2191 \u2193 slice',
                    'P peak',
                    'F flip',
                    'X crosshair',
                    'Esc all components',
                ].map((text) => h('kbd', {}, text)),
            ),
        );
    }

    /** Takes over what is to be shown, by number; keys act on it from now on. It is drawn by `draw`. */
    present(component: GroupComponent, run: GroupRun): void {
        [this.component, this.run] = [component, run];
        this.title.textContent = `${component.title} in ${run.name}`;
        this.components.set(component.index);
        this.runs.set(run.index);
        const { select } = this.runs;
        this.group.runs.forEach(({ name, index }) => {
            select.options[index].text = component.outlying[index] ? `\u25c6 ${name}` : name;
        });
        const outlying = component.outlying[run.index];
        this.amplitude.classList.toggle('chip-unsure', outlying);
        this.amplitude.classList.add('chip');
        this.amplitude.textContent =
            `amplitude ${amplitudeText(this.group, component.amplitudes[run.index])}`
            + (outlying ? ' \u25c6 outlier' : '');
    }

    enter(): void {
        scrollTo(0, 0);
        this.title.focus({ preventScroll: true });
        this.controls.refresh();
    }

    /** Resolves when everything is drawn. */
    async draw(): Promise<void> {
        const { component, group, run } = this;
        this.missing.hidden = run.hasMaps;
        this.missing.textContent = `The maps of ${run.name} did not fit into this page; open ${run.mapFile} in the folder of the study.`;
        this.numbers.replaceChildren(runTable(group, component, run), spatialTable(component));
        this.drawDots();
        const [course] = await Promise.all([
            group.course(run, component),
            this.brains.show(this.entries[component.index], run.hasMaps ? runEntry(group, component, run) : null),
        ]);
        if (component !== this.component || run !== this.run) return;
        const sign = group.signs.of(component);
        showCourse(
            this.course,
            `${component.title} in ${run.name}`,
            course.map((value) => value * sign),
            group.plan.RepetitionTime,
        );
    }

    key(event: KeyboardEvent): boolean {
        const key = event.key.toLowerCase();
        if (key === 'arrowleft') this.components.step(-1);
        else if (key === 'arrowright') this.components.step(1);
        else if (key === 'k') this.runs.step(-1);
        else if (key === 'j') this.runs.step(1);
        else if (key === 'arrowup') this.brains.moveSlice(1);
        else if (key === 'arrowdown') this.brains.moveSlice(-1);
        else if (key === 'p') this.brains.goToPeak();
        else if (key === 'f') this.group.signs.flip(this.component);
        else if (key === 'x') this.toggleCrosshair();
        else if (key === 'escape') location.hash = '#/';
        else return false;
        return true;
    }

    private drawDots(): void {
        const { end, tick } = roundEnd(Math.max(...this.component.amplitudes));
        this.dots.replaceChildren(
            dotRow(this.group, this.component, end, this.hint, this.run),
            dotAxis(end, tick),
            this.hint.element,
        );
    }

    private toggleCrosshair(): void {
        this.look.crosshair = !this.look.crosshair;
        this.brains.lookChanged();
    }
}
