import { isInView } from '../brain/extent';
import { ceilingOf, type Look } from '../brain/look';
import { type PlaneName, planeOf } from '../brain/plane';
import type { Vector } from '../data/affine';
import { focusOf } from '../data/coloured_map';
import type { ComponentMap } from '../data/component_map';
import type { MapEntry, MapSource } from '../data/map_source';
import { shownMap } from '../data/shown_component';
import { h } from '../dom';
import { BrainPanel } from './brain_panel';

/** Two maps or one, with one crosshair and, unless their values mean different things, one colour scale. */
export class BrainPair {
    readonly element = h('div', { class: 'brains' });
    private readonly first: BrainPanel;
    private second: BrainPanel | null = null; // made on demand
    private component: MapEntry | null = null;
    private compared: MapEntry | null = null;
    private drawn: MapEntry | null = null; // the component that the crosshair was placed for
    private voxel: Vector | null = null;
    private high = 0; // the larger one of the maps shown
    private activePlane: PlaneName = 'axial';
    private redraw = 0;

    constructor(
        private readonly run: MapSource,
        private readonly look: Look,
        private readonly oneScale = true,
    ) {
        this.first = this.addPanel();
    }

    /** Draws the maps, with the crosshair at the largest cluster of a new first component. Resolves when all is drawn. */
    async show(component: MapEntry, compared: MapEntry | null): Promise<void> {
        this.component = component;
        this.compared = compared;
        if (compared) this.second ??= this.addPanel();
        if (this.second) this.second.element.hidden = compared === null;
        this.element.classList.toggle('brains-two', compared !== null);
        const [map, other] = await Promise.all(
            [component, compared].map((shown) => shown && shownMap(this.run, shown)),
        );
        // Maps may be unpacked in a different order than requested: draw only what is still wanted.
        if (!map || component !== this.component || compared !== this.compared) return;
        this.high = Math.max(map.high, other?.high ?? 0);
        if (this.drawn !== component || !this.voxel) this.voxel = focusOf(this.run, map, this.look);
        this.drawn = component;
        this.first.show(component, map, this.commonLook(), this.voxel);
        if (compared && other) this.second?.show(compared, other, this.commonLook(), this.voxel);
    }

    /** Redraws at most once per frame, because sliders report more changes than that. */
    lookChanged(): void {
        cancelAnimationFrame(this.redraw);
        this.redraw = requestAnimationFrame(() => this.panels().forEach((panel) => panel.setLook(this.commonLook())));
    }

    goToPeak(panel = this.first): void {
        if (panel.currentMap) this.moveTo(this.peakOf(panel.currentMap));
    }

    /** Moves by a number of slices in the plane used last. */
    moveSlice(by: number): void {
        if (!this.voxel) return;
        const { grid } = this.run;
        const { through } = planeOf(grid, this.activePlane, false);
        this.moveTo(grid.moved(this.voxel, through, grid.along(through, this.voxel) + by));
    }

    private addPanel(): BrainPanel {
        const panel = new BrainPanel(this.run);
        panel.onPick = (voxel, plane) => {
            this.activePlane = plane ?? this.activePlane;
            this.moveTo(voxel);
        };
        panel.onPeak = () => this.goToPeak(panel);
        this.element.append(panel.element);
        return panel;
    }

    private panels(): BrainPanel[] {
        return this.compared && this.second ? [this.first, this.second] : [this.first];
    }

    private commonLook(): Look {
        return this.oneScale ? { ...this.look, ceiling: ceilingOf(this.look, this.high) } : this.look;
    }

    private peakOf(map: ComponentMap): Vector {
        return this.run.grid.voxelAt(this.run.gridOf[map.peak]);
    }

    private moveTo(voxel: Vector): void {
        if (!this.run.grid.contains(voxel) || !isInView(this.run, voxel)) return;
        this.voxel = voxel;
        for (const panel of this.panels()) panel.setCrosshair(voxel);
    }
}
