import type { BrainView } from '../brain/brain_view';
import { colourBar } from '../brain/colour_bar';
import { croppedSize } from '../brain/extent';
import { type Look, ROW_WIDTH } from '../brain/look';
import { makeBrainView } from '../brain/make_brain_view';
import type { NiivueView } from '../brain/niivue_view';
import type { PlaneName } from '../brain/plane';
import type { Vector } from '../data/affine';
import { colouredMap } from '../data/coloured_map';
import type { ComponentMap } from '../data/component_map';
import type { MapEntry, MapSource } from '../data/map_source';
import { append, h } from '../dom';
import { crosshairReadout, valueText } from './crosshair_readout';

/** The planes of one component with its colour bar and the value under the crosshair. */
export class BrainPanel {
    readonly element: HTMLElement;
    onPick: (voxel: Vector, plane: PlaneName | null) => void = () => {};
    onPeak: () => void = () => {};
    private readonly sign = h('span', { class: 'brain-sign' });
    private readonly foot = h('div', { class: 'brain-foot' });
    private readonly title = h('h3', { class: 'brain-title' });
    private readonly place = h('div', { class: 'brain-place', role: 'group' });
    private readonly bar = h('div', { class: 'brain-bar' });
    private readonly readout = h('div', { class: 'brain-readout' });
    private view: BrainView | null = null;
    private look: Look | null = null;
    private map: ComponentMap | null = null;
    private component: MapEntry | null = null;
    private voxel: Vector = [0, 0, 0];

    constructor(private readonly run: MapSource) {
        this.element = h('div', { class: 'brain' }, this.title, this.place, this.foot);
        append(this.foot, [
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
        ]);
        new ResizeObserver(() => this.placeFoot()).observe(this.place);
    }

    // Into the corner that the planes leave empty, if it is large enough: below the lower planes where the three are side
    // by side, beside the axial plane where they are two by two.
    private placeFoot(): void {
        const { clientWidth: width, clientHeight: height } = this.place;
        if (width === 0) return;
        const [x, y, z] = croppedSize(this.run);
        const row = width >= ROW_WIDTH;
        const share = row ? x / (2 * x + y) : x / (x + y);
        const scale = width / (row ? 2 * x + y : x + y);
        const room = row ? (Math.max(y, z) - z) * scale : y * scale;
        this.foot.style.setProperty('--foot-width', `${(1 - share) * width - 8}px`);
        this.foot.classList.add('brain-foot-inside');
        if (this.foot.offsetHeight > Math.min(room, height)) this.foot.classList.remove('brain-foot-inside');
    }

    /** Draws the map of a component with the crosshair at a voxel. */
    show(component: MapEntry, map: ComponentMap, look: Look, voxel: Vector): void {
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
        this.placeFoot();
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
