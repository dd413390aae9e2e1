import { blocks } from './blocks';

/** Marks a voxel whose value is not a finite number. */
export const NO_VALUE = -32768;

/** A component's map inside the mask, as whole numbers of 10^-decimals. */
export interface ComponentMap {
    values: Int16Array; // one a voxel of the mask, in the order of the file
    decimals: number;
    scale: number; // value = number * scale
    /** Position inside the mask of the value of largest magnitude. */
    peak: number;
    /** 99.9th percentile of the magnitudes: a ceiling for the colours that single voxels do not move. */
    high: number;
}

/** All low bytes, then all high bytes, each number the difference from the one before, modulo 2^16. */
export function unpackDifferences(bytes: Uint8Array): Int16Array {
    const count = bytes.length >> 1;
    const values = new Int16Array(count);
    let before = 0;
    for (let i = 0; i < count; ++i) {
        before = (before + bytes[i] + (bytes[count + i] << 8)) & 0xffff;
        values[i] = before; // wraps into the signed range
    }
    return values;
}

function describe(values: Int16Array, decimals: number): ComponentMap {
    const histogram = new Uint32Array(32768);
    let peak = 0;
    let largest = -1;
    for (let i = 0; i < values.length; ++i) {
        if (values[i] === NO_VALUE) continue;
        const magnitude = Math.abs(values[i]);
        ++histogram[magnitude];
        if (magnitude > largest) {
            largest = magnitude;
            peak = i;
        }
    }
    const scale = 10 ** -decimals;
    let above = 0;
    let high = 32767;
    for (; high > 0; --high) {
        above += histogram[high];
        if (above >= values.length / 1000) break;
    }
    return { values, decimals, scale, peak, high: high * scale };
}

/** Unpacks maps when they are asked for and keeps the ones used last. */
export class ComponentMaps {
    private readonly kept = new Map<number, Promise<ComponentMap>>();

    constructor(
        private readonly decimals: number[],
        private readonly limit = 24,
    ) {}

    get(component: number): Promise<ComponentMap> {
        const known = this.kept.get(component);
        this.kept.delete(component); // goes to the end: the order of the keys is the order of use
        const map =
            known
            ?? blocks
                .bytes(`map-${component}`)
                .then((bytes) => describe(unpackDifferences(bytes), this.decimals[component]));
        this.kept.set(component, map);
        if (this.kept.size > this.limit) this.kept.delete(this.kept.keys().next().value!);
        return map;
    }
}
