import { colour } from '../theme';

/** A fingerprint in small: the eleven values as a star, clockwise from the top; values without number sit in the middle. */
export function drawFingerprintGlyph(canvas: HTMLCanvasElement, values: number[]): void {
    const context = canvas.getContext('2d')!;
    const { width, height } = canvas;
    const ratio = window.devicePixelRatio || 1;
    const radius = Math.min(width, height) / 2 - 2 * ratio;
    const corner = (share: number, i: number): [number, number] => {
        const angle = (2 * Math.PI * i) / values.length - Math.PI / 2;
        return [width / 2 + share * radius * Math.cos(angle), height / 2 + share * radius * Math.sin(angle)];
    };
    const shape = (shares: number[]): void => {
        context.beginPath();
        shares.forEach((share, i) => context.lineTo(...corner(share, i)));
        context.closePath();
    };
    context.clearRect(0, 0, width, height);
    context.lineWidth = ratio;
    context.strokeStyle = colour('line');
    for (const ring of [0.5, 1]) {
        shape(values.map(() => ring));
        context.stroke();
    }
    shape(values.map((value) => Math.min(1, Math.max(0, Number.isFinite(value) ? value : 0))));
    context.fillStyle = colour('curve-fill');
    context.fill();
    context.lineWidth = 1.5 * ratio;
    context.strokeStyle = colour('curve');
    context.stroke();
}
