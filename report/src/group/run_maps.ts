import { blocks } from '../data/blocks';
import { type ComponentMap, describeMap, NO_VALUE, RecentMaps } from '../data/component_map';

/** Decodes 8-bit differences from the preceding number, modulo 2^8; -128 marks a voxel without a finite value. */
export function unpackSteps(bytes: Uint8Array): Int16Array {
    const values = new Int16Array(bytes.length);
    let before = 0;
    for (let i = 0; i < bytes.length; ++i) {
        before = (before + bytes[i]) & 0xff;
        values[i] = before === 128 ? NO_VALUE : (before << 24) >> 24; // as a signed number
    }
    return values;
}

/** The maps of the runs; number run * components + component. `steps`: [run][component], in units of z. */
export function runMaps(steps: (number[] | null)[], components: number): RecentMaps {
    const unpack = async (index: number): Promise<ComponentMap> => {
        const [run, component] = [Math.floor(index / components), index % components];
        const values = unpackSteps(await blocks.bytes(`run-${run}-map-${component}`));
        return describeMap(values, 1, steps[run]![component]);
    };
    return new RecentMaps(unpack);
}
