// The pixels of a screenshot: 8-bit RGB or RGBA without interlacing, which is what the browser writes.
import { inflateSync } from 'node:zlib';

function paeth(a, b, c) {
    const [pa, pb, pc] = [Math.abs(b - c), Math.abs(a - c), Math.abs(a + b - 2 * c)];
    return pa <= pb && pa <= pc ? a : pb <= pc ? b : c;
}

/** { width, height, at(x, y) } with [red, green, blue]. */
export function readPng(file) {
    const [width, height] = [file.readUInt32BE(16), file.readUInt32BE(20)];
    const channels = file[25] === 6 ? 4 : 3;
    const parts = [];
    for (let at = 8; at < file.length; at += 12 + file.readUInt32BE(at)) {
        if (file.toString('latin1', at + 4, at + 8) === 'IDAT')
            parts.push(file.subarray(at + 8, at + 8 + file.readUInt32BE(at)));
    }
    const raw = inflateSync(Buffer.concat(parts));
    const line = width * channels;
    const pixels = Buffer.alloc(line * height);
    for (let y = 0; y < height; ++y) {
        const filter = raw[y * (line + 1)];
        for (let i = 0; i < line; ++i) {
            const left = i >= channels ? pixels[y * line + i - channels] : 0;
            const up = y > 0 ? pixels[(y - 1) * line + i] : 0;
            const corner = y > 0 && i >= channels ? pixels[(y - 1) * line + i - channels] : 0;
            const guess = [0, left, up, (left + up) >> 1, paeth(left, up, corner)][filter];
            pixels[y * line + i] = raw[y * (line + 1) + 1 + i] + guess;
        }
    }
    return {
        width,
        height,
        at: (x, y) => [...pixels.subarray((y * width + x) * channels, (y * width + x) * channels + 3)],
    };
}

/** How many pixels are clearly coloured, that is, belong to a map and not to the grey image. */
export function colouredPixels(image) {
    let count = 0;
    for (let y = 0; y < image.height; ++y) {
        for (let x = 0; x < image.width; ++x) {
            const [r, g, b] = image.at(x, y);
            const green = g > r && g > b; // the crosshair
            if (!green && Math.max(r, g, b) - Math.min(r, g, b) > 60) ++count;
        }
    }
    return count;
}

/** Contrast ratio of two colours, 1 to 21, by the formula of the Web Content Accessibility Guidelines 2. */
export function contrast(one, other) {
    const luminance = (rgb) =>
        rgb
            .map((value) => value / 255)
            .map((value) => (value <= 0.04045 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4))
            .reduce((sum, value, i) => sum + value * [0.2126, 0.7152, 0.0722][i], 0);
    const [light, dark] = [luminance(one), luminance(other)].sort((a, b) => b - a);
    return (light + 0.05) / (dark + 0.05);
}
