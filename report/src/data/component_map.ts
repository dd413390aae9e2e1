import { blocks } from './blocks';

/** Marks a voxel with a non-finite value. */
export const NO_VALUE = -32768;

/** A component's map inside the mask, as integers in units of 10^-decimals. */
export interface ComponentMap {
    values: Int16Array; // one per voxel of the mask, in file order
    decimals: number;
    scale: number; // value = integer * scale
    /** Position inside the mask of the value with the largest magnitude. */
    peak: number;
    /** 99.9th percentile of the magnitudes: an upper end for the colours that outlying voxels do not affect. */
    high: number;
}

/** Decodes 16-bit differences from the preceding number, modulo 2^16, stored as all low bytes, then all high bytes. */
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

/** A map of such integers, with what its views need to know about their distribution. */
export function describeMap(values: Int16Array, decimals: number, scale = 10 ** -decimals): ComponentMap {
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
    let above = 0;
    let high = 32767;
    for (; high > 0; --high) {
        above += histogram[high];
        if (above >= values.length / 1000) break;
    }
    return { values, decimals, scale, peak, high: high * scale };
}

const inversions = new WeakMap<ComponentMap, ComponentMap>();

/** The map with the opposite sign. */
export function inverted(map: ComponentMap): ComponentMap {
    const known = inversions.get(map);
    if (known) return known;
    const made = { ...map, values: map.values.map((value) => (value === NO_VALUE ? NO_VALUE : -value)) };
    inversions.set(map, made);
    return made;
}

/** Unpacks maps on demand and keeps the most recently used ones. */
export class RecentMaps {
    private readonly kept = new Map<number, Promise<ComponentMap>>();

    constructor(
        private readonly unpack: (index: number) => Promise<ComponentMap>,
        private readonly limit = 24,
    ) {}

    get(index: number): Promise<ComponentMap> {
        const map = this.kept.get(index) ?? this.unpack(index);
        this.kept.delete(index); // set again, so that the keys stay in order of use
        this.kept.set(index, map);
        if (this.kept.size > this.limit) this.kept.delete(this.kept.keys().next().value!);
        return map;
    }
}

/** The maps in the blocks `block`-0 and so on. */
export function componentMaps(decimals: number[], limit = 24, block = 'map'): RecentMaps {
    const unpack = async (index: number): Promise<ComponentMap> =>
        describeMap(unpackDifferences(await blocks.bytes(`${block}-${index}`)), decimals[index]);
    return new RecentMaps(unpack, limit);
}
