import type { BrainView } from '../brain/brain_view';
import { colourBar } from '../brain/colour_bar';
import type { Look } from '../brain/look';
import { makeBrainView } from '../brain/make_brain_view';
import type { NiivueView } from '../brain/niivue_view';
import type { PlaneName } from '../brain/plane';
import type { Vector } from '../data/affine';
import { colouredMap } from '../data/coloured_map';
import type { ComponentMap } from '../data/component_map';
import type { Component, Run } from '../data/run';
import { h } from '../dom';
import { crosshairReadout, valueText } from './crosshair_readout';

/** The planes of one component with its colour bar and the value under the crosshair. */
export class BrainPanel {
    readonly element: HTMLElement;
    onPick: (voxel: Vector, plane: PlaneName | null) => void = () => {};
    onPeak: () => void = () => {};
    private readonly sign = h('span', { class: 'brain-sign' });
    private readonly title = h('h3', { class: 'brain-title' });
    private readonly place = h('div', { class: 'brain-place', role: 'group' });
    private readonly bar = h('div', { class: 'brain-bar' });
    private readonly readout = h('div', { class: 'brain-readout' });
    private view: BrainView | null = null;
    private look: Look | null = null;
    private map: ComponentMap | null = null;
    private component: Component | null = null;
    private voxel: Vector = [0, 0, 0];

    constructor(private readonly run: Run) {
        this.element = h(
            'div',
            { class: 'brain' },
            this.title,
            this.place,
            h(
                'div',
                { class: 'brain-foot' },
                this.readout,
                h(
                    'div',
                    { class: 'brain-flip' },
                    h(
                        'button',
                        {
                            type: 'button',
                            class: 'button',
                            'data-action': 'flip',
                            title: 'Inverts map, time course and correlations (key F)',
                            onclick: () => this.component && run.signs.flip(this.component),
                        },
                        'Flip sign',
                    ),
                    this.sign,
                ),
                this.bar,
            ),
        );
    }

    /** Draws the map of a component with the crosshair at a voxel. */
    show(component: Component, map: ComponentMap, look: Look, voxel: Vector): void {
        this.title.textContent = component.title;
        this.component = component;
        const flipped = this.run.signs.isFlipped(component);
        this.sign.textContent = flipped ? 'flipped from the files' : 'sign of the files';
        this.element.dataset.flipped = String(flipped);
        this.map = map;
        this.voxel = voxel;
        this.setLook(look);
        this.readOut();
    }

    setLook(look: Look): void {
        this.look = look;
        if (!this.map) return;
        this.view ??= makeBrainView(this.run, this.place, (view) => this.replaceView(view));
        this.view.onPick = (voxel, plane) => this.onPick(voxel, plane);
        this.view.show(colouredMap(this.run, this.map, look).map, look, this.voxel);
        this.bar.replaceChildren(colourBar(look, this.map.high));
    }

    setCrosshair(voxel: Vector): void {
        this.voxel = voxel;
        this.view?.setCrosshair(voxel);
        this.readOut();
    }

    get currentMap(): ComponentMap | null {
        return this.map;
    }

    private replaceView(view: NiivueView): void {
        this.view?.dispose();
        this.view = view;
        view.reveal();
        if (this.look) this.setLook(this.look);
    }

    private readOut(): void {
        if (!this.map) return;
        this.place.setAttribute(
            'aria-label',
            `${this.title.textContent}: three planes through voxel ${this.voxel.join(', ')}, `
                + `z ${valueText(this.run, this.map, this.voxel)}`,
        );
        this.readout.replaceChildren(crosshairReadout(this.run, this.map, this.voxel, () => this.onPeak()));
    }
}
