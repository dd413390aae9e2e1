import { colour } from '../theme';

/** Draws a small power spectrum without axes, from 0 to the Nyquist frequency, filled, its largest value at the top. */
export function drawSpectrumGlyph(canvas: HTMLCanvasElement, power: number[]): void {
    const context = canvas.getContext('2d')!;
    const { width, height } = canvas;
    const ratio = window.devicePixelRatio || 1;
    const largest = Math.max(...power) || 1;
    const floor = height - ratio;
    context.clearRect(0, 0, width, height);
    context.beginPath();
    context.moveTo(0, floor);
    power.forEach((value, k) =>
        context.lineTo((k / (power.length - 1)) * width, floor - (value / largest) * (floor - 2 * ratio)),
    );
    context.lineTo(width, floor);
    context.fillStyle = colour('curve-fill');
    context.fill();
    context.lineWidth = 1.2 * ratio;
    context.strokeStyle = colour('curve');
    context.stroke();
}
