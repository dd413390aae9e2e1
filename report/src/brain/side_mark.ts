/** Draws a letter for a side of the body, legible over black and bright tissue, aligned as set in the context. */
export function drawSideMark(
    context: CanvasRenderingContext2D,
    letter: string,
    x: number,
    y: number,
    size: number,
): void {
    context.font = `600 ${size}px system-ui, sans-serif`;
    context.textBaseline = 'middle';
    context.lineJoin = 'round';
    context.lineWidth = size / 4;
    context.strokeStyle = '#000';
    context.strokeText(letter, x, y);
    context.fillStyle = '#e8ebef';
    context.fillText(letter, x, y);
}
