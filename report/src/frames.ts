/** Resolves with the time when the next frame is on the screen. */
export function painted(): Promise<number> {
    return new Promise((resolve) => requestAnimationFrame(() => setTimeout(() => resolve(performance.now()))));
}

export function nextFrame(): Promise<number> {
    return new Promise((resolve) => requestAnimationFrame(resolve));
}
