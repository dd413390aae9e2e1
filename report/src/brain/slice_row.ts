import type { ComponentMap } from '../data/component_map';
import type { Run } from '../data/run';
import { frameOfMask, frameSize } from './extent';
import type { Look } from './look';
import { axialPositions } from './mask_picture';
import { planeOf } from './plane';
import { drawSideMark } from './side_mark';
import { drawSlice, paintSlice } from './slice';

/** Draws axial slices of a map over the mean image side by side; the width of the canvas is given. */
export function drawSliceRow(canvas: HTMLCanvasElement, run: Run, map: ComponentMap, look: Look): void {
    const plane = planeOf(run.grid, 'axial', look.radiological);
    const frame = frameOfMask(run, plane);
    const size = frameSize(frame, plane);
    const positions = axialPositions(run);
    const width = canvas.width / positions.length;
    const height = (width * size.height) / size.width;
    canvas.height = Math.max(1, Math.round(height));
    const context = canvas.getContext('2d')!;
    positions.forEach((position, i) => {
        paintSlice(context, drawSlice(run, map, look, plane, position, frame), look, i * width, 0, width, height);
    });
    const mark = Math.min(0.14 * height, 0.12 * width);
    context.textAlign = 'left';
    drawSideMark(context, plane.marks.left, mark * 0.2, height / 2, mark);
}
