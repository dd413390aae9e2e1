import { ceilingOf, type Look } from '../brain/look';
import type { PlaneName } from '../brain/plane';
import { planeOf } from '../brain/plane';
import { ChartBox } from '../charts/chart';
import { showFingerprint } from '../charts/fingerprint_chart';
import { showSpectrum } from '../charts/spectrum_chart';
import { showTimeCourse } from '../charts/time_course_chart';
import type { Vector } from '../data/affine';
import { bandsFor } from '../data/bands';
import type { ComponentMap } from '../data/component_map';
import type { Component, Run } from '../data/run';
import { h } from '../dom';
import { LABELS, type Labels } from '../labels/labels';
import { BrainPanel } from './brain_panel';
import { ComponentHead } from './component_head';
import { lookControls } from './look_controls';
import { fingerprintTable, matchTable } from './parameter_table';
import type { View } from './view';

/** One component from every side, alone or beside a second one. */
export class ComponentView implements View {
    readonly element: HTMLElement;
    private readonly head: ComponentHead;
    private readonly controls: ReturnType<typeof lookControls>;
    private readonly brain: BrainPanel;
    private other: BrainPanel | null = null;
    private readonly brains = h('div', { class: 'brains' });
    private readonly course = new ChartBox('course', [660, 200]);
    private readonly spectrum = new ChartBox('spectrum', [310, 240]);
    private readonly spectrumNote = h('p', { class: 'chart-note' });
    private readonly fingerprint = new ChartBox('fingerprint', [310, 270]);
    private readonly tables = h('div', { class: 'tables' });
    private component: Component | null = null;
    private compared: Component | null = null;
    private drawn: Component | null = null; // the one that the crosshair was set for
    private high = 0; // of the maps shown
    private voxel: Vector | null = null;
    private activePlane: PlaneName = 'axial';
    private position = 0; // in the gallery's order, where the component last stood
    private redraw = 0;

    /** `neighbours`: the components in the gallery's order; `open`: goes to another one. */
    constructor(private readonly run: Run, private readonly labels: Labels, private readonly look: Look,
        private readonly neighbours: () => Component[], private readonly open: (component: Component) => void) {
        const highest = Math.max(...run.components.map((c) => Math.max(Math.abs(c.lowest), Math.abs(c.highest))));
        this.head = new ComponentHead(run, labels);
        this.head.onStep = (by) => this.step(by);
        this.head.onCompare = (other) => void this.compare(other);
        this.controls = lookControls(this.look, highest, () => this.lookChanged());
        this.brain = this.makePanel();
        this.brains.append(this.brain.element);
        const figure = (title: string, ...content: HTMLElement[]): HTMLElement =>
            h('figure', { class: 'panel' }, h('figcaption', {}, title), ...content);
        this.element = h('main', { class: 'view component' },
            this.head.element,
            h('section', { class: 'panel brain-panel', 'aria-label': 'Map' }, this.brains,
                this.controls.element,
                h('p', { class: 'chart-note sign-note' },
                    'The sign of a component is arbitrary: only map and time course together have a meaning.')),
            h('div', { class: 'component-side' },
                figure('Fingerprint', this.fingerprint.element, this.tables)),
            h('div', { class: 'component-charts' },
                figure('Time course', this.course.element),
                figure('Power spectrum', this.spectrum.element, this.spectrumNote)),
            h('p', { class: 'keys' }, 'Keys: ', ...['\u2190 \u2192 component', '\u2191 \u2193 slice', 'S N U label', 'P peak']
                .map((text) => h('kbd', {}, text))));
    }

    /** Shows a component; resolves when everything is drawn. */
    async show(component: Component): Promise<void> {
        const list = this.neighbours();
        const at = list.indexOf(component);
        this.component = component;
        if (at >= 0) this.position = at;
        this.head.show(component, at < 0 ? 'not in the selection' : `${at + 1} of ${list.length}`);
        this.drawCharts();
        await this.drawMaps();
    }

    enter(): void {
        scrollTo(0, 0);
        this.controls.refresh();
    }

    key(event: KeyboardEvent): boolean {
        const label = LABELS.find(({ key }) => key === event.key.toLowerCase());
        if (event.key === 'ArrowLeft') this.step(-1);
        else if (event.key === 'ArrowRight') this.step(1);
        else if (event.key === 'ArrowUp') this.moveSlice(1);
        else if (event.key === 'ArrowDown') this.moveSlice(-1);
        else if (event.key.toLowerCase() === 'p') this.goToPeak(this.brain);
        else if (label && this.component) this.labels.toggle(this.component.name, label.label);
        else return false;
        return true;
    }

    private makePanel(): BrainPanel {
        const panel = new BrainPanel(this.run);
        panel.onPick = (voxel, plane) => {
            this.activePlane = plane ?? this.activePlane;
            this.moveTo(voxel);
        };
        panel.onPeak = () => this.goToPeak(panel);
        return panel;
    }

    private async compare(other: Component | null): Promise<void> {
        this.compared = other;
        if (other && !this.other) {
            this.other = this.makePanel();
            this.brains.append(this.other.element);
        }
        this.brains.classList.toggle('brains-two', other !== null);
        if (this.other) this.other.element.hidden = other === null;
        this.drawCharts();
        await this.drawMaps();
    }

    // Maps may be unpacked in another order than they were asked for: only what is wanted then is drawn.
    private async drawMaps(): Promise<void> {
        const { component, compared } = this;
        if (!component) return;
        const [map, second] = await Promise.all([component, compared].map((shown) => shown && this.run.maps.get(shown.index)));
        if (!map || component !== this.component || compared !== this.compared) return;
        this.high = Math.max(map.high, second?.high ?? 0);
        if (this.drawn !== component || !this.voxel) this.voxel = this.peakOf(map);
        this.drawn = component;
        this.brain.show(component, map, this.commonLook(), this.voxel);
        if (compared && second) this.other?.show(compared, second, this.commonLook(), this.voxel);
    }

    /** The look with one end of the colours for both maps. */
    private commonLook(): Look {
        return { ...this.look, ceiling: ceilingOf(this.look, this.high) };
    }

    private drawCharts(): void {
        const { component, compared, run } = this;
        if (!component) return;
        showTimeCourse(this.course, run, component, compared);
        this.spectrumNote.textContent =
            showSpectrum(this.spectrum, bandsFor(run.trSeconds), run.trSeconds, component, compared);
        showFingerprint(this.fingerprint, component, compared);
        const shown = compared ? [component, compared] : [component];
        this.tables.replaceChildren(fingerprintTable(run, shown), matchTable(run, shown));
    }

    private peakOf(map: ComponentMap): Vector {
        return this.run.grid.voxelAt(this.run.gridOf[map.peak]);
    }

    private goToPeak(panel: BrainPanel): void {
        if (panel.currentMap) this.moveTo(this.peakOf(panel.currentMap));
    }

    private moveTo(voxel: Vector): void {
        if (!this.run.grid.contains(voxel)) return;
        this.voxel = voxel;
        this.brain.setCrosshair(voxel);
        if (this.compared) this.other?.setCrosshair(voxel);
    }

    private moveSlice(by: number): void {
        if (!this.voxel) return;
        const { grid } = this.run;
        const { through } = planeOf(grid, this.activePlane, false);
        this.moveTo(grid.moved(this.voxel, through, grid.along(through, this.voxel) + by));
    }

    // A component that a new label took out of the selection has left its place to the one after it.
    private step(by: 1 | -1): void {
        const list = this.neighbours();
        const own = list.indexOf(this.component!);
        const next = own >= 0 ? own + by : this.position + (by > 0 ? 0 : -1);
        if (list.length > 0) this.open(list[(next + list.length) % list.length]);
    }

    // Sliders send more changes than the screen has pictures.
    private lookChanged(): void {
        cancelAnimationFrame(this.redraw);
        this.redraw = requestAnimationFrame(() => {
            this.brain.setLook(this.commonLook());
            if (this.compared) this.other?.setLook(this.commonLook());
        });
    }
}
