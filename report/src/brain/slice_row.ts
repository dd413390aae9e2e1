import type { Brain } from '../data/brain';
import type { ComponentMap } from '../data/component_map';
import { frameOfMask, frameSize } from './extent';
import type { Look } from './look';
import { axialPositions } from './mask_picture';
import { planeOf } from './plane';
import { drawSideMark } from './side_mark';
import { drawSlice, paintSlice } from './slice';

/** Draws axial slices of a map over the mean image side by side; the width of the canvas is given. */
export function drawSliceRow(canvas: HTMLCanvasElement, brain: Brain, map: ComponentMap, look: Look): void {
    const plane = planeOf(brain.grid, 'axial', look.radiological);
    const frame = frameOfMask(brain, plane);
    const size = frameSize(frame, plane);
    const positions = axialPositions(brain);
    const width = canvas.width / positions.length;
    const height = (width * size.height) / size.width;
    canvas.height = Math.max(1, Math.round(height));
    const context = canvas.getContext('2d')!;
    positions.forEach((position, i) => {
        paintSlice(context, drawSlice(brain, map, look, plane, position, frame), look, i * width, 0, width, height);
    });
    const mark = Math.min(0.14 * height, 0.12 * width);
    context.textAlign = 'left';
    drawSideMark(context, plane.marks.left, mark * 0.2, height / 2, mark);
}
