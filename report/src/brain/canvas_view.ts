import type { Vector } from '../data/affine';
import type { Brain } from '../data/brain';
import type { ComponentMap } from '../data/component_map';
import { h } from '../dom';
import type { BrainView } from './brain_view';
import { croppedSize, frameOfMask, frameSize, MARGIN } from './extent';
import type { Look } from './look';
import { PLANES, type Plane, type PlaneName, planeOf } from './plane';
import { drawSideMark } from './side_mark';
import { acrossAt, drawSlice, type Frame, paintSlice } from './slice';

/** The planes drawn with the 2D canvas, for browsers without WebGL2. */
export class CanvasView implements BrainView {
    readonly element = h('div', { class: 'planes', 'data-renderer': 'canvas' });
    onPick: BrainView['onPick'] = () => {};

    private readonly canvases: Record<PlaneName, HTMLCanvasElement>;
    private readonly resized = new ResizeObserver(() => this.draw());
    private map: ComponentMap | null = null;
    private look: Look | null = null;
    private crosshair: Vector = [0, 0, 0];

    constructor(private readonly brain: Brain) {
        this.canvases = Object.fromEntries(PLANES.map((name) => [name, this.makeCanvas(name)])) as never;
        const [x, y] = croppedSize(brain);
        this.element.style.setProperty('--two-by-two', `${x}fr ${y}fr`);
        this.resized.observe(this.element);
    }

    show(map: ComponentMap, look: Look, voxel: Vector): void {
        this.map = map;
        this.look = look;
        this.crosshair = voxel;
        this.draw();
    }

    setCrosshair(voxel: Vector): void {
        this.crosshair = voxel;
        this.draw();
    }

    dispose(): void {
        this.resized.disconnect();
        this.element.remove();
    }

    private makeCanvas(name: PlaneName): HTMLCanvasElement {
        const plane = planeOf(this.brain.grid, name, false);
        const label = this.brain.grid.oriented ? `${name} plane` : `plane ${PLANES.indexOf(name) + 1} of 3`;
        const canvas = h('canvas', { class: 'plane', 'data-plane': name, role: 'img', 'aria-label': label });
        const { width, height } = frameSize(this.frame(plane), plane);
        canvas.style.aspectRatio = String(width / height);
        canvas.style.flex = `${width} 1 0`; // the same scale for all three
        canvas.addEventListener('pointerdown', (event) => {
            canvas.setPointerCapture(event.pointerId);
            this.pick(name, event);
        });
        canvas.addEventListener('pointermove', (event) => {
            if (event.buttons === 1) this.pick(name, event);
        });
        this.element.append(canvas);
        return canvas;
    }

    private pick(name: PlaneName, event: PointerEvent): void {
        const plane = planeOf(this.brain.grid, name, this.look?.radiological ?? false);
        const box = this.canvases[name].getBoundingClientRect();
        const frame = this.frame(plane);
        const columns = frame.acrossTo - frame.acrossFrom + 1;
        const rows = frame.upTo - frame.upFrom + 1;
        const column = Math.floor(((event.clientX - box.left) / box.width) * columns);
        const row = Math.floor(((event.clientY - box.top) / box.height) * rows);
        const moved = this.brain.grid.moved(this.crosshair, plane.across, acrossAt(plane, frame, column));
        this.onPick(this.brain.grid.moved(moved, plane.up, frame.upTo - row), name);
    }

    private frame(plane: Plane): Frame {
        return frameOfMask(this.brain, plane, MARGIN);
    }

    private draw(): void {
        for (const name of PLANES) this.drawPlane(name);
    }

    private drawPlane(name: PlaneName): void {
        const canvas = this.canvases[name];
        if (!this.map || !this.look || canvas.clientWidth === 0) return;
        const ratio = window.devicePixelRatio || 1;
        canvas.width = Math.round(canvas.clientWidth * ratio);
        canvas.height = Math.round(canvas.clientHeight * ratio);
        const plane = planeOf(this.brain.grid, name, this.look.radiological);
        const { grid } = this.brain;
        const context = canvas.getContext('2d')!;
        const frame = this.frame(plane);
        const position = grid.along(plane.through, this.crosshair);
        const pixels = drawSlice(this.brain, this.map, this.look, plane, position, frame);
        paintSlice(context, pixels, this.look, 0, 0, canvas.width, canvas.height);

        const across = grid.along(plane.across, this.crosshair);
        const column = (plane.mirrored ? frame.acrossTo - across : across - frame.acrossFrom) + 0.5;
        const row = frame.upTo - grid.along(plane.up, this.crosshair) + 0.5;
        const x = Math.round((column / (frame.acrossTo - frame.acrossFrom + 1)) * canvas.width);
        const y = Math.round((row / (frame.upTo - frame.upFrom + 1)) * canvas.height);
        if (this.look.crosshair) this.drawCrosshair(context, x, y, ratio);
        this.drawMarks(context, plane.marks, ratio);
    }

    private drawCrosshair(context: CanvasRenderingContext2D, x: number, y: number, ratio: number): void {
        const { width, height } = context.canvas;
        const gap = 7 * ratio; // keeps the voxel itself visible
        context.strokeStyle = 'rgba(110, 235, 150, 0.85)';
        context.lineWidth = ratio;
        context.beginPath();
        context.moveTo(0, y);
        context.lineTo(x - gap, y);
        context.moveTo(x + gap, y);
        context.lineTo(width, y);
        context.moveTo(x, 0);
        context.lineTo(x, y - gap);
        context.moveTo(x, y + gap);
        context.lineTo(x, height);
        context.stroke();
    }

    private drawMarks(
        context: CanvasRenderingContext2D,
        marks: { left: string; right: string; top: string; bottom: string },
        ratio: number,
    ): void {
        const { width, height } = context.canvas;
        const size = 13 * ratio;
        context.textAlign = 'left';
        drawSideMark(context, marks.left, 6 * ratio, height / 2, size);
        context.textAlign = 'right';
        drawSideMark(context, marks.right, width - 6 * ratio, height / 2, size);
        context.textAlign = 'center';
        drawSideMark(context, marks.top, width / 2, 11 * ratio, size);
        drawSideMark(context, marks.bottom, width / 2, height - 10 * ratio, size);
    }
}
