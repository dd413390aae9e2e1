import type { Vector } from '../data/affine';
import type { ComponentMap } from '../data/component_map';
import type { Look } from './look';
import type { PlaneName } from './plane';

/** Three linked planes of a map over the mean image, independent of what draws them. */
export interface BrainView {
    readonly element: HTMLElement;
    /** Draws a map with the crosshair at a voxel. */
    show(map: ComponentMap, look: Look, voxel: Vector): void;
    setCrosshair(voxel: Vector): void;
    /** Called when the reader moves the crosshair, with the plane that was used. */
    onPick: (voxel: Vector, plane: PlaneName | null) => void;
    dispose(): void;
}
