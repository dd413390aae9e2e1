import type { Affine, Vector } from '../data/affine';
import { blocks } from '../data/blocks';
import { componentMaps, unpackDifferences } from '../data/component_map';
import { Grid } from '../data/grid';
import { hash } from '../data/hash';
import type { MapEntry, MapSource } from '../data/map_source';
import { indexMask } from '../data/mask_index';
import { Signs } from '../data/signs';
import { columnOf, numberIn, parseTable, type Table } from '../data/table';
import { runMaps } from './run_maps';

/** What znica wrote to the page. */
interface GroupBlock {
    name: string;
    version: string;
    grid: { size: Vector; voxel_to_mm: Affine; oriented: boolean };
    voxels_inside: number;
    study: Plan;
    decomposition: Separation;
    metrics_tsv: string;
    columns: Record<string, { LongName?: string; Description?: string }>;
    amplitudes_tsv: string;
    netmats_tsv: string;
    has_mean: boolean;
    maps: { decimals: number; lowest: number; highest: number; negative_tail: boolean }[];
    runs: {
        name: string;
        volumes: number;
        map_file: string; // from the folder of the study
        explained_percent: number | null;
        metrics_tsv: string;
        course_decimals: number;
        map_steps: number[] | null; // null: left out
    }[];
    most_map_bytes: number;
}

export interface Plan {
    RepetitionTime: number;
    DummyScans: number;
    Preparation: { SmoothingFWHM: number; HighPassCutOff: number; Scaling: 'none' | 'percent' | 'sd' };
    RowsKept: number;
}

export interface Separation {
    ComponentsRequested: number;
    ComponentsFound: number;
    ComponentsOfRuns?: number[]; // only if the number was estimated
    Repeats: number;
    Starts: number;
    Seed: number;
}

/** A group component. */
export interface GroupComponent extends MapEntry {
    lowest: number; // value of the map
    highest: number;
    stability: number; // NaN: not repeated
    spatial: { column: string; title: string; about: string; value: number }[];
    amplitudes: number[]; // one per run
    outlying: boolean[]; // one per run
    median: number; // of the amplitudes
}

export interface GroupRun {
    index: number;
    name: string;
    volumes: number;
    explainedPercent: number; // NaN: unknown
    hasMaps: boolean;
    mapFile: string; // of the exact maps, from the folder of the study
    similarity: number[]; // one per component: correlation of its effect map with the group's map
    lag1: number[]; // one per component: autocorrelation of its course
}

/** How the courses of two components go together over the runs; signs as in the files. */
export interface Correlation {
    mean: number;
    sd: number; // of Fisher's z; NaN with one run
}

/** A group analysis, read from the blocks of this file. */
export interface Group extends MapSource {
    name: string;
    version: string;
    plan: Plan;
    separation: Separation;
    components: GroupComponent[];
    runs: GroupRun[];
    correlations: Correlation[][]; // [a][b], symmetric; on the diagonal NaN
    voxelsInside: number;
    hasMean: boolean;
    mostMapBytes: number;
    /** The course of a component in a run, variance 1, with the sign of the files. */
    course(run: GroupRun, component: GroupComponent): Promise<number[]>;
}

/** What the amplitudes are in, from the scaling of the data. */
export function amplitudeUnit({ Preparation: { Scaling } }: Plan): string {
    return { none: 'units of the data', percent: '% of the mean', sd: 'SD of the voxel' }[Scaling];
}

/** With fewer runs, no amplitude is marked as an outlier. */
export const FEWEST_FOR_OUTLIERS = 6;

/** The map of a run, as an entry of the group's maps. */
export function runEntry(group: Group, component: GroupComponent, run: GroupRun): MapEntry {
    const { name, negativeTail } = component;
    const index = group.components.length * (1 + run.index) + component.index;
    return { index, name, negativeTail, title: run.name };
}

const SPATIAL: [column: string, title: string][] = [
    ['degree_of_clustering', 'Degree of clustering'],
    ['skewness', 'Skewness, rescaled'],
    ['kurtosis', 'Kurtosis, rescaled'],
    ['spatial_entropy', 'Spatial entropy'],
    ['map_skewness', 'Skewness of the map'],
    ['map_kurtosis', 'Excess kurtosis of the map'],
];

function median(values: number[]): number {
    const sorted = [...values].sort((a, b) => a - b);
    const half = sorted.length >> 1;
    return sorted.length % 2 === 1 ? sorted[half] : (sorted[half - 1] + sorted[half]) / 2;
}

function readComponents(block: GroupBlock): GroupComponent[] {
    const metrics = parseTable(block.metrics_tsv);
    const amplitudes = parseTable(block.amplitudes_tsv);
    const outliers = amplitudes.rows.map((row) => row[amplitudes.columns.indexOf('outliers')].split(','));
    const at = (row: string[], column: string): number => numberIn(row[metrics.columns.indexOf(column)]);
    return metrics.rows.map((row, index) => {
        const name = row[metrics.columns.indexOf('component')];
        const values = columnOf(amplitudes, amplitudes.columns.indexOf(name));
        return {
            index,
            name,
            title: `IC ${index + 1}`,
            negativeTail: block.maps[index].negative_tail,
            lowest: block.maps[index].lowest,
            highest: block.maps[index].highest,
            stability: at(row, 'stability_iq'),
            spatial: SPATIAL.map(([column, title]) => ({
                column,
                title,
                about: block.columns[column]?.Description ?? '',
                value: at(row, column),
            })).filter(({ value }) => !Number.isNaN(value)),
            amplitudes: values,
            outlying: outliers.map((names) => names.includes(name)),
            median: median(values),
        };
    });
}

function readRuns(block: GroupBlock): GroupRun[] {
    return block.runs.map((run, index) => {
        const metrics = parseTable(run.metrics_tsv);
        const column = (name: string): number[] => columnOf(metrics, metrics.columns.indexOf(name));
        return {
            index,
            name: run.name,
            volumes: run.volumes,
            explainedPercent: run.explained_percent ?? NaN,
            hasMaps: run.map_steps !== null,
            mapFile: run.map_file,
            similarity: column('group_similarity'),
            lag1: column('lag1_autocorr'),
        };
    });
}

function readCorrelations(table: Table, components: GroupComponent[]): Correlation[][] {
    const none = { mean: NaN, sd: NaN };
    const matrix = components.map(() => components.map((): Correlation => none));
    const number = new Map(components.map(({ name, index }) => [name, index]));
    for (const [a, b, mean, sd] of table.rows) {
        const [i, j] = [number.get(a), number.get(b)];
        if (i === undefined || j === undefined) continue;
        matrix[i][j] = matrix[j][i] = { mean: numberIn(mean), sd: numberIn(sd) };
    }
    return matrix;
}

export async function readGroup(): Promise<Group> {
    const [text, mask] = await Promise.all([blocks.text('group'), blocks.bytes('mask')]);
    const block = JSON.parse(text) as GroupBlock;
    const components = readComponents(block);
    const count = components.length;
    const own = componentMaps(block.maps.map(({ decimals }) => decimals));
    const others = runMaps(
        block.runs.map(({ map_steps }) => map_steps),
        count,
    );
    return {
        name: block.name,
        version: block.version,
        plan: block.study,
        separation: block.decomposition,
        components,
        runs: readRuns(block),
        correlations: readCorrelations(parseTable(block.netmats_tsv), components),
        grid: new Grid(block.grid.size, block.grid.voxel_to_mm, block.grid.oriented),
        voxelsInside: block.voxels_inside,
        ...indexMask(mask, block.voxels_inside),
        grey: block.has_mean ? await blocks.bytes('mean') : mask.map((inside) => (inside ? 70 : 0)),
        hasMean: block.has_mean,
        mostMapBytes: block.most_map_bytes,
        maps: { get: (index) => (index < count ? own.get(index) : others.get(index - count)) },
        signs: new Signs(hash(block.amplitudes_tsv)),
        async course(run, component) {
            const all = unpackDifferences(await blocks.bytes(`courses-${run.index}`));
            const scale = 10 ** -block.runs[run.index].course_decimals;
            const from = component.index * run.volumes;
            return Array.from(all.subarray(from, from + run.volumes), (value) => value * scale);
        },
    };
}
