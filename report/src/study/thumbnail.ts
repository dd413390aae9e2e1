// Small pictures of the mean images, drawn when they come into view.

/** Pixels of three squares side by side, axial, coronal and sagittal. */
const WIDTH = 132;
const HEIGHT = 44;
const BLACK = 'a'.charCodeAt(0);
const OUTLINE = 'q'.charCodeAt(0);
const OUTLINE_COLOUR = [240, 154, 75];

function draw(canvas: HTMLCanvasElement, pixels: string): void {
    const image = new ImageData(WIDTH, HEIGHT);
    for (let i = 0; i < WIDTH * HEIGHT; ++i) {
        const code = pixels.charCodeAt(i);
        const grey = (code - BLACK) * 17;
        const colour = code === OUTLINE ? OUTLINE_COLOUR : [grey, grey, grey];
        image.data.set([...colour, 255], 4 * i);
    }
    canvas.getContext('2d')!.putImageData(image, 0, 0);
    canvas.dataset.drawn = '';
}

const waiting = new WeakMap<Element, string>();
const seen = new IntersectionObserver(
    (entries) => {
        for (const { isIntersecting, target } of entries) {
            if (!isIntersecting) continue;
            draw(target as HTMLCanvasElement, waiting.get(target)!);
            seen.unobserve(target);
        }
    },
    { rootMargin: '600px' },
);

/** The picture of a run; null when it has none. */
export function thumbnail(pixels: string, about: string): HTMLCanvasElement | null {
    if (pixels.length !== WIDTH * HEIGHT) return null;
    const canvas = document.createElement('canvas');
    canvas.width = WIDTH;
    canvas.height = HEIGHT;
    canvas.className = 'thumbnail';
    canvas.setAttribute('role', 'img');
    canvas.setAttribute('aria-label', about);
    waiting.set(canvas, pixels);
    seen.observe(canvas);
    return canvas;
}
