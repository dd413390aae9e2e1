import type { BrainView } from '../brain/brain_view';
import { colourBar } from '../brain/colour_bar';
import type { Look } from '../brain/look';
import { makeBrainView } from '../brain/make_brain_view';
import type { PlaneName } from '../brain/plane';
import type { Vector } from '../data/affine';
import type { ComponentMap } from '../data/component_map';
import type { Component, Run } from '../data/run';
import { h } from '../dom';
import { crosshairReadout } from './crosshair_readout';

/** The planes of one component with its colour bar and the value under the crosshair. */
export class BrainPanel {
    readonly element: HTMLElement;
    onPick: (voxel: Vector, plane: PlaneName | null) => void = () => {};
    onPeak: () => void = () => {};
    private readonly title = h('h3', { class: 'brain-title' });
    private readonly place = h('div', { class: 'brain-place' });
    private readonly bar = h('div', { class: 'brain-bar' });
    private readonly readout = h('div', { class: 'brain-readout' });
    private view: Promise<BrainView> | null = null;
    private map: ComponentMap | null = null;
    private voxel: Vector = [0, 0, 0];

    constructor(private readonly run: Run) {
        this.element = h('div', { class: 'brain' }, this.title, this.place,
            h('div', { class: 'brain-foot' }, this.readout, this.bar));
    }

    /** Draws a component; resolves when it is on the screen's next picture. */
    async show(component: Component, look: Look, voxelOf: (map: ComponentMap) => Vector): Promise<void> {
        this.title.textContent = component.title;
        this.view ??= this.makeView();
        const [view, map] = await Promise.all([this.view, this.run.maps.get(component.index)]);
        this.map = map;
        view.show(map, look);
        this.bar.replaceChildren(colourBar(look, map.high));
        this.moveTo(voxelOf(map), view);
    }

    async setLook(look: Look): Promise<void> {
        if (!this.map || !this.view) return;
        (await this.view).show(this.map, look);
        this.bar.replaceChildren(colourBar(look, this.map.high));
    }

    async setCrosshair(voxel: Vector): Promise<void> {
        if (this.view && this.map) this.moveTo(voxel, await this.view);
    }

    get currentMap(): ComponentMap | null {
        return this.map;
    }

    private moveTo(voxel: Vector, view: BrainView): void {
        this.voxel = voxel;
        view.setCrosshair(voxel);
        this.readout.replaceChildren(crosshairReadout(this.run, this.map!, this.voxel, () => this.onPeak()));
    }

    private async makeView(): Promise<BrainView> {
        const view = await makeBrainView(this.run, this.place);
        view.onPick = (voxel, plane) => this.onPick(voxel, plane);
        return view;
    }
}
