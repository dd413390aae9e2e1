import type { Affine, Vector } from './affine';
import { bandsFor, isDefined } from './bands';
import { blocks } from './blocks';
import { componentMaps } from './component_map';
import type { ComponentFacts, Decomposition } from './decomposition';
import { Grid } from './grid';
import { hash } from './hash';
import type { MapSource } from './map_source';
import { indexMask } from './mask_index';
import { type Measures, measuresIn } from './measures';
import { METRICS } from './metrics';
import { Signs } from './signs';
import { columnOf, numberIn, parseTable } from './table';

interface RunBlock {
    name: string;
    decomposition: Decomposition;
    columns: Record<string, { LongName?: string; Description?: string; Units?: string }>;
    metrics_tsv: string;
    mixing_tsv: string;
    design_tsv: string;
    grid: { size: Vector; voxel_to_mm: Affine; oriented?: boolean };
    voxels_inside: number;
    has_mean: boolean;
    maps: { decimals: number; lowest: number; highest: number; negative_tail: boolean }[];
    compared?: RunBlock & { folder: string; pairs: { a: number; b: number; r: number }[] };
}

/** A component with everything that the tables of the run hold about it. */
export interface Component {
    index: number;
    name: string; // "ICA_00", as in the files
    title: string; // "IC 1", as the plug-in numbers them
    values: number[]; // the sixteen parameters; NaN for n/a and for undefined frequency bands
    cells: string[]; // the same parameters as written in the table
    predictor: string | null; // best match by name
    region: string | null;
    measures: Measures;
    classification: string | null; // from the metrics table, if somebody filled it in
    timeCourse: number[];
    trSeconds: number; // of the time course; a compared result may have another one than the run
    lowest: number; // value of the map
    highest: number;
    negativeTail: boolean; // the longer tail of the map is the negative one
    facts: ComponentFacts | undefined;
    repeats: number | null; // of the result that the component belongs to; null: it was not repeated
    otherDesign: boolean; // compared with other predictors than those of this run
}

/** The component of a compared result that a component matches best. */
export interface Partner {
    component: Component;
    r: number; // spatial correlation, with the signs of the files
}

/** Another result whose components are shown beside those of the run. */
export interface ComparedRun {
    folder: string;
    components: Component[];
    partners: Map<Component, Partner>; // of the run's components
}

/** Whether the analysis was repeated, so that the component has a stability index. */
export function isRepeated(component: Component): boolean {
    return component.facts?.StabilityIndex !== undefined;
}

export interface Predictor {
    name: string;
    values: number[];
}

/** A finished run, read from the blocks of this file. */
export interface Run extends MapSource {
    name: string;
    /**
     * Identifies the labels of this run in the browser's storage. Derived from the numbers alone, so that filling in
     * names or classifications does not change it.
     */
    id: string;
    facts: Decomposition;
    columns: RunBlock['columns'];
    trSeconds: number;
    components: Component[];
    predictors: Predictor[];
    voxelsInside: number;
    hasMean: boolean; // otherwise `grey` shows the shape of the mask
    compared: ComparedRun | null;
}

function named(cell: string | undefined): string | null {
    return cell === undefined || cell === '' || cell === 'n/a' ? null : cell;
}

function secondsPerVolume(block: RunBlock): number {
    return block.decomposition.Input.RepetitionTimeMilliseconds / 1000;
}

function readComponents(block: RunBlock): Component[] {
    const metrics = parseTable(block.metrics_tsv);
    const mixing = parseTable(block.mixing_tsv);
    const at = (column: string): number => metrics.columns.indexOf(column);
    const trSeconds = secondsPerVolume(block);
    const bands = bandsFor(trSeconds);
    return metrics.rows.map((row, index) => {
        const name = row[at('component')];
        const cells = METRICS.map((metric) => row[at(metric.column)] ?? 'n/a');
        const facts = block.decomposition.Components.find((component) => component.Name === name);
        return {
            index,
            name,
            title: `IC ${index + 1}`,
            cells,
            values: cells.map((cell, m) => (isDefined(METRICS[m].column, bands) ? numberIn(cell) : NaN)),
            predictor: named(row[at('dm_pred_name')]),
            region: named(row[at('template_voi_name')]),
            measures: measuresIn((column) => row[at(column)]),
            classification: named(row[at('classification')]),
            timeCourse: columnOf(mixing, mixing.columns.indexOf(name)),
            trSeconds,
            lowest: block.maps[index].lowest,
            highest: block.maps[index].highest,
            negativeTail: block.maps[index].negative_tail,
            facts,
            repeats: block.decomposition.Repeats?.Runs ?? null,
            otherDesign: false,
        };
    });
}

function readPredictors(block: RunBlock): Predictor[] {
    if (!block.design_tsv) return [];
    const table = parseTable(block.design_tsv);
    return table.columns.map((name, position) => ({ name, values: columnOf(table, position) }));
}

function readCompared(block: RunBlock, components: Component[]): ComparedRun | null {
    const { compared } = block;
    if (!compared) return null;
    const others = readComponents(compared).map((component) => ({
        ...component,
        index: components.length + component.index,
        name: `${compared.folder}/${component.name}`,
        title: `${compared.folder}: ${component.title}`,
        otherDesign: compared.design_tsv !== block.design_tsv,
    }));
    const partners = new Map(
        compared.pairs.map(({ a, b, r }): [Component, Partner] => [components[a], { component: others[b], r }]),
    );
    return { folder: compared.folder, components: others, partners };
}

export async function readRun(): Promise<Run> {
    const [text, mask] = await Promise.all([blocks.text('run'), blocks.bytes('mask')]);
    const block = JSON.parse(text) as RunBlock;
    const components = readComponents(block);
    const grey = block.has_mean ? await blocks.bytes('mean') : mask.map((inside) => (inside ? 70 : 0));
    const compared = readCompared(block, components);
    const id = hash([block.mixing_tsv, ...components.flatMap(({ cells }) => cells)].join('\t'));
    const signs = new Signs(id);
    for (const [component, match] of compared?.partners ?? []) signs.follow(match.component, component, match.r);
    return {
        name: block.name,
        id,
        facts: block.decomposition,
        columns: block.columns,
        trSeconds: secondsPerVolume(block),
        components,
        predictors: readPredictors(block),
        grid: new Grid(block.grid.size, block.grid.voxel_to_mm, block.grid.oriented),
        voxelsInside: block.voxels_inside,
        ...indexMask(mask, block.voxels_inside),
        grey,
        hasMean: block.has_mean,
        compared,
        maps: componentMaps([...block.maps, ...(block.compared?.maps ?? [])].map((map) => map.decimals)),
        signs,
    };
}
