import { blocks } from './blocks';
import { componentMaps, type RecentMaps } from './component_map';

/** A measure of the image before and after denoising; null where it is not defined. */
export interface QualityRow {
    measure: string;
    title: string;
    units: string;
    before: number | null;
    after: number | null;
}

/** What became of a component, or of the confounds or the cosines of the high-pass filter together. */
export interface RemovedPart {
    name: string; // "ICA_03", "confounds" or "high_pass"
    removed: boolean;
    label: string; // signal, noise, unsure or empty
    reason: string;
    percent: number | null; // of the variance over time
}

interface DenoisingBlock {
    image: string;
    method: 'nonaggr' | 'aggr' | 'orthaggr';
    tr_seconds: number;
    dummy_scans: number;
    high_pass_seconds: number; // cut-off period; 0: none
    quality: QualityRow[];
    parts: RemovedPart[];
    notes: string[];
    dvars_before: (number | null)[]; // per analysed volume; null for the first
    dvars_after: (number | null)[];
    framewise_displacement: (number | null)[] | null; // mm
    carpet: { rows: number; limit: number };
    maps: { title: string; decimals: number }[];
}

/** The evidence of a denoised image. */
export interface Denoising extends DenoisingBlock {
    carpets: { before: Uint8Array; after: Uint8Array }; // [row][volume]: 0 to 255 for -limit to limit
    evidence: RecentMaps; // the maps, in the order of `maps`
}

/** Null for a report without a denoised image. */
export async function readDenoising(): Promise<Denoising | null> {
    if (!blocks.has('denoising')) return null;
    const [text, before, after] = await Promise.all([
        blocks.text('denoising'),
        blocks.bytes('carpet-before'),
        blocks.bytes('carpet-after'),
    ]);
    const block = JSON.parse(text) as DenoisingBlock;
    return {
        ...block,
        carpets: { before, after },
        evidence: componentMaps(
            block.maps.map(({ decimals }) => decimals),
            block.maps.length,
            'evidence',
        ),
    };
}
