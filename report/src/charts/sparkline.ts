import { colour } from '../theme';

/** Draws a small time course without axes, with an optional second curve behind it. */
export function drawSparkline(canvas: HTMLCanvasElement, values: number[], behind: number[] | null): void {
    const context = canvas.getContext('2d')!;
    const { width, height } = canvas;
    const pad = height * 0.06;
    context.clearRect(0, 0, width, height);
    const curve = (curveValues: number[], name: string, lineWidth: number): void => {
        context.strokeStyle = colour(name);
        context.lineWidth = lineWidth;
        context.lineJoin = 'round';
        context.beginPath();
        curveValues.forEach((value, t) =>
            context.lineTo((t / (curveValues.length - 1)) * width, height - pad - value * (height - 2 * pad)),
        );
        context.stroke();
    };
    const ratio = window.devicePixelRatio || 1;
    if (behind) curve(behind, 'curve-predictor', 1.1 * ratio);
    curve(values, 'curve', 1.3 * ratio);
}
