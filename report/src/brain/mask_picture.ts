import type { Brain } from '../data/brain';
import { extentOfMask, frameOfMask, frameSize } from './extent';
import { LIGHTEST_GREY } from './look';
import { planeOf } from './plane';
import { acrossAt, staged } from './slice';

const COLUMNS = 4;
const MOST = 8; // slices
const MARGIN = 5; // voxels around the mask, where something may be missing from it
const OUTLINE = '#ffb000';

/** Axial positions from bottom to top; all slices of a thin mask. */
export function axialPositions(brain: Brain): number[] {
    const [from, to] = extentOfMask(brain)[2];
    const count = Math.min(MOST, to - from + 1);
    return Array.from({ length: count }, (_, i) => Math.round(from + ((i + 0.5) / count) * (to - from + 1) - 0.5));
}

/** Number of slices side by side in the picture of the mask. */
export function maskColumns(brain: Brain): number {
    return Math.min(COLUMNS, axialPositions(brain).length);
}

/** Draws axial slices of the mean image with the outline of the mask; the width of the canvas is given. */
export function drawMask(canvas: HTMLCanvasElement, brain: Brain): void {
    const plane = planeOf(brain.grid, 'axial', false);
    const frame = frameOfMask(brain, plane, MARGIN);
    const size = frameSize(frame, plane);
    const all = axialPositions(brain);
    const columns = maskColumns(brain);
    const width = canvas.width / columns;
    const height = (width * size.height) / size.width;
    canvas.height = Math.max(1, Math.round(height * Math.ceil(all.length / columns)));
    const context = canvas.getContext('2d')!;
    context.fillStyle = '#000';
    context.fillRect(0, 0, canvas.width, canvas.height);
    const cell = width / (frame.acrossTo - frame.acrossFrom + 1);
    const line = height / (frame.upTo - frame.upFrom + 1);
    all.forEach((position, i) => {
        context.save();
        context.translate((i % columns) * width, Math.floor(i / columns) * height);
        const indexAt = (column: number, row: number): number =>
            brain.grid.offset(plane.through, position)
            + brain.grid.offset(plane.across, acrossAt(plane, frame, column))
            + brain.grid.offset(plane.up, frame.upTo - row);
        const outline = new Path2D();
        const grey = new ImageData(frame.acrossTo - frame.acrossFrom + 1, frame.upTo - frame.upFrom + 1);
        let pixel = 0;
        for (let row = 0; row <= frame.upTo - frame.upFrom; ++row) {
            for (let column = 0; column <= frame.acrossTo - frame.acrossFrom; ++column) {
                const index = indexAt(column, row);
                grey.data.fill(LIGHTEST_GREY * brain.grey[index], pixel, pixel + 3);
                grey.data[pixel + 3] = 255;
                pixel += 4;
                const inside = brain.insideOf[index] >= 0;
                const differs = (c: number, r: number): boolean => brain.insideOf[indexAt(c, r)] >= 0 !== inside;
                if (column > 0 && differs(column - 1, row)) {
                    outline.moveTo(column * cell, row * line);
                    outline.lineTo(column * cell, (row + 1) * line);
                }
                if (row > 0 && differs(column, row - 1)) {
                    outline.moveTo(column * cell, row * line);
                    outline.lineTo((column + 1) * cell, row * line);
                }
            }
        }
        context.imageSmoothingEnabled = false;
        context.drawImage(staged(grey, 0), 0, 0, width, height);
        context.strokeStyle = OUTLINE;
        context.lineWidth = Math.max(1, canvas.width / 400);
        context.stroke(outline);
        context.restore();
    });
}
