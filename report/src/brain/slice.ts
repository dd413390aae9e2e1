import type { Brain } from '../data/brain';
import { type ComponentMap, NO_VALUE } from '../data/component_map';
import { colourMap } from './colour_maps';
import { ceilingOf, LIGHTEST_GREY, type Look } from './look';
import type { Plane } from './plane';

/** A rectangle of a plane, in voxels along its axes, limits included. */
export interface Frame {
    acrossFrom: number;
    acrossTo: number;
    upFrom: number;
    upTo: number;
}

/**
 * Two images of a slice, one pixel per voxel: the mean image, and the map in colours, transparent below the threshold.
 */
export interface SlicePixels {
    grey: ImageData;
    overlay: ImageData;
}

/** Position along the axis across for a column of the image. */
export function acrossAt(plane: Plane, frame: Frame, column: number): number {
    return plane.mirrored ? frame.acrossTo - column : frame.acrossFrom + column;
}

export function drawSlice(
    brain: Brain,
    map: ComponentMap,
    look: Look,
    plane: Plane,
    position: number,
    frame: Frame,
): SlicePixels {
    const width = frame.acrossTo - frame.acrossFrom + 1;
    const height = frame.upTo - frame.upFrom + 1;
    const grey = new ImageData(width, height);
    const overlay = new ImageData(width, height);
    const { positive, negative } = colourMap(look.colourMap);
    const from = look.threshold / map.scale;
    const steps = 255 / (ceilingOf(look, map.high) / map.scale - from);
    const columns = Array.from({ length: width }, (_, c) => brain.grid.offset(plane.across, acrossAt(plane, frame, c)));
    const base = brain.grid.offset(plane.through, position);
    let pixel = 0;
    for (let row = 0; row < height; ++row) {
        const line = base + brain.grid.offset(plane.up, frame.upTo - row);
        for (let column = 0; column < width; ++column, pixel += 4) {
            const index = line + columns[column];
            const level = LIGHTEST_GREY * brain.grey[index];
            grey.data[pixel] = grey.data[pixel + 1] = grey.data[pixel + 2] = level;
            grey.data[pixel + 3] = 255;
            const inside = brain.insideOf[index];
            if (inside < 0) continue;
            const value = map.values[inside];
            const magnitude = Math.abs(value);
            if (magnitude < from || value === NO_VALUE || value === 0) continue;
            const step = 3 * Math.min(255, Math.round((magnitude - from) * steps));
            const lut = value > 0 ? positive : negative;
            overlay.data[pixel] = lut[step];
            overlay.data[pixel + 1] = lut[step + 1];
            overlay.data[pixel + 2] = lut[step + 2];
            overlay.data[pixel + 3] = 255;
        }
    }
    return { grey, overlay };
}

const stages: HTMLCanvasElement[] = [];

/** The pixels on a canvas, which can be drawn scaled. One scratch canvas per layer is enough: draw each at once. */
export function staged(pixels: ImageData, layer: number): HTMLCanvasElement {
    stages[layer] ??= document.createElement('canvas');
    const stage = stages[layer];
    stage.width = pixels.width;
    stage.height = pixels.height;
    stage.getContext('2d')!.putImageData(pixels, 0, 0);
    return stage;
}

/** Draws both images of a slice into a rectangle of a canvas. */
export function paintSlice(
    context: CanvasRenderingContext2D,
    pixels: SlicePixels,
    look: Look,
    x: number,
    y: number,
    width: number,
    height: number,
): void {
    context.imageSmoothingEnabled = look.smooth;
    context.imageSmoothingQuality = 'high';
    context.drawImage(staged(pixels.grey, 0), x, y, width, height);
    context.globalAlpha = look.opacity;
    context.drawImage(staged(pixels.overlay, 1), x, y, width, height);
    context.globalAlpha = 1;
}
