import type { Brain } from './brain';
import type { ComponentMap } from './component_map';
import type { Signs } from './signs';

/** A component as far as the sign that it is shown with is concerned. */
export interface Signed {
    name: string; // "ICA_00", as in the files
    negativeTail: boolean; // the longer tail of the map is the negative one
}

/** A map that can be shown; the maps of one component share its name, and with it the sign. */
export interface MapEntry extends Signed {
    index: number; // among the maps of the source
    title: string; // "IC 1"
}

/** Maps in a brain, with the sign of the files, and the signs that they are shown with. */
export interface MapSource extends Brain {
    maps: { get(index: number): Promise<ComponentMap> };
    signs: Signs;
}
