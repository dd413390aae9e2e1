import type { Brain } from '../data/brain';
import { colouredMap } from '../data/coloured_map';
import type { ComponentMap } from '../data/component_map';
import { type CardSlice, cardPlanes, cardSlices } from './card_slices';
import { frameOfMask, frameSize } from './extent';
import type { Look } from './look';
import { type Plane, type PlaneName, planeOf } from './plane';
import { drawSideMark } from './side_mark';
import { drawSlice, paintSlice } from './slice';

const GAP = 0.012; // between slices, as a fraction of the width

interface Size {
    width: number;
    height: number;
}

/** A slice with the rectangle that it takes up, in fractions of the width of the canvas. */
export interface DrawnSlice extends CardSlice, Size {
    x: number;
    y: number;
}

// Extent of the mask in a plane, in mm.
function sizeOf(brain: Brain, plane: Plane): Size {
    return frameSize(frameOfMask(brain, plane), plane);
}

function isAxial(row: PlaneName[]): boolean {
    return row.every((name) => name === 'axial');
}

// Sizes of the slices of each row for a width of 1; all slices of a row have the same scale.
function layout(brain: Brain): Size[][] {
    const rows = cardPlanes(brain);
    const columns = Math.max(...rows.map(({ length }) => length));
    return rows.map((row) => {
        const sizes = row.map((name) => sizeOf(brain, planeOf(brain.grid, name, false)));
        const missing = isAxial(row) ? Math.max(0, columns - row.length) : 0; // a shorter row has the same scale
        const widths = sizes.reduce((sum, { width }) => sum + width, 0) + missing * sizes[0].width;
        const scale = (1 - GAP * (row.length + missing - 1)) / widths;
        return sizes.map(({ width, height }) => ({ width: width * scale, height: height * scale }));
    });
}

/** Width of a card's picture relative to its height, so that the slices fill it. */
export function cardAspect(brain: Brain): number {
    const heights = layout(brain).map((row) => Math.max(...row.map(({ height }) => height)));
    return 1 / (heights.reduce((sum, height) => sum + height, 0) + GAP * (heights.length - 1));
}

/** Draws the slices of a component that show where it is, and returns them, the first row first. */
export function drawCard(canvas: HTMLCanvasElement, brain: Brain, map: ComponentMap, look: Look): DrawnSlice[] {
    const coloured = colouredMap(brain, map, look);
    const drawn: DrawnSlice[] = [];
    const sizes = layout(brain);
    const context = canvas.getContext('2d')!;
    context.fillStyle = '#000';
    context.fillRect(0, 0, canvas.width, canvas.height);
    let top = 0;
    cardSlices(brain, coloured, look).forEach((slices, row) => {
        const height = Math.max(...sizes[row].map((size) => size.height));
        let left = 0;
        slices.forEach((slice, i) => {
            const size = sizes[row][i];
            drawn.push({ ...slice, x: left, y: top + (height - size.height) / 2, ...size });
            left += size.width + GAP;
        });
        top += height + GAP;
    });
    drawn.forEach((slice, i) => drawOne(context, brain, coloured.map, look, slice, i === 0));
    return drawn;
}

// Left and right are marked on the first slice, which stands for all.
function drawOne(
    context: CanvasRenderingContext2D,
    brain: Brain,
    map: ComponentMap,
    look: Look,
    slice: DrawnSlice,
    marked: boolean,
): void {
    const plane = planeOf(brain.grid, slice.plane, look.radiological);
    const [x, y, width, height] = [slice.x, slice.y, slice.width, slice.height].map(
        (part) => part * context.canvas.width,
    );
    const pixels = drawSlice(brain, map, look, plane, slice.position, frameOfMask(brain, plane));
    paintSlice(context, pixels, look, x, y, width, height);
    if (!marked) return;
    const size = Math.min(0.12 * height, 0.05 * context.canvas.width);
    context.textAlign = 'left';
    drawSideMark(context, plane.marks.left, x + size * 0.2, y + height / 2, size);
    context.textAlign = 'right';
    drawSideMark(context, plane.marks.right, x + width - size * 0.2, y + height / 2, size);
}
