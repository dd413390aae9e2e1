import { colour } from '../theme';

/** Draws a small fingerprint: the eleven values as a star, clockwise from the top. Missing values leave a gap. */
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
    const shares = values.map((value) => Math.min(1, Math.max(0, value)));
    context.fillStyle = colour('curve-fill');
    context.lineWidth = 1.5 * ratio;
    context.strokeStyle = colour('curve');
    if (shares.every(Number.isFinite)) {
        shape(shares);
        context.fill();
        context.stroke();
        return;
    }
    shares.forEach((share, i) => {
        const next = (i + 1) % shares.length;
        if (!Number.isFinite(share) || !Number.isFinite(shares[next])) return;
        context.beginPath();
        context.moveTo(...corner(share, i));
        context.lineTo(...corner(shares[next], next));
        context.stroke();
    });
}
