import {
    interpolateBlues,
    interpolateCividis,
    interpolateInferno,
    interpolateViridis,
    interpolateYlOrBr,
} from 'd3-scale-chromatic';

/** Colours for one sign of a map: 256 steps from the threshold to the ceiling, as red, green, blue. */
export type Lut = Uint8Array;

/** Colours for a signed map over a grey image, chosen so that colour-blind readers can distinguish them. */
export interface ColourMap {
    id: string;
    title: string;
    positive: Lut;
    negative: Lut;
    signed: boolean; // the two signs look different
}

// The part of the ramp from `from` to `to`, so that neither end is lost in the grey of the image.
function lut(ramp: (t: number) => string, from: number, to: number): Lut {
    const table = new Uint8Array(3 * 256);
    for (let i = 0; i < 256; ++i) {
        const colour = ramp(from + ((to - from) * i) / 255);
        const parts = colour.startsWith('#')
            ? [1, 3, 5].map((at) => parseInt(colour.slice(at, at + 2), 16))
            : colour.match(/\d+/g)!.map(Number);
        table.set(parts.slice(0, 3), 3 * i);
    }
    return table;
}

function unsigned(id: string, title: string, ramp: (t: number) => string, from: number): ColourMap {
    const both = lut(ramp, from, 1);
    return { id, title, positive: both, negative: both, signed: false };
}

/**
 * Orange and blue differ in the channel that red-green blindness leaves intact (ColorBrewer YlOrBr and Blues, both
 * marked colour-blind safe there; dark means weak). Viridis, cividis (Nunez et al. 2018) and inferno rise evenly in
 * lightness and show only the magnitude.
 */
export const COLOUR_MAPS: ColourMap[] = [
    {
        id: 'orange-blue',
        title: 'Orange and blue',
        positive: lut(interpolateYlOrBr, 0.72, 0.14),
        negative: lut(interpolateBlues, 0.86, 0.2),
        signed: true,
    },
    unsigned('viridis', 'Viridis (magnitude)', interpolateViridis, 0.25),
    unsigned('cividis', 'Cividis (magnitude)', interpolateCividis, 0.25),
    unsigned('inferno', 'Inferno (magnitude)', interpolateInferno, 0.35),
];

export function colourMap(id: string): ColourMap {
    return COLOUR_MAPS.find((map) => map.id === id) ?? COLOUR_MAPS[0];
}
