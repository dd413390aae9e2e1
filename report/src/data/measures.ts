import { numberIn } from './table';

/** What the metrics table says about a component beside the sixteen parameters; nothing is rescaled. */
export interface Measures {
    explainedPercent: number; // of the variance over time; NaN in results without this column
    skewness: number; // of the map
    kurtosis: number;
    confound: { name: string; strength: number } | null; // the most similar one; null: none, or not compared
}

/** `cell`: the component's cell of a column, undefined where the table has no such column. */
export function measuresIn(cell: (column: string) => string | undefined): Measures {
    const name = cell('confound_name');
    const strength = numberIn(cell('confound_max_corr'));
    return {
        explainedPercent: numberIn(cell('explained_variance')),
        skewness: numberIn(cell('map_skewness')),
        kurtosis: numberIn(cell('map_kurtosis')),
        confound: name === undefined || Number.isNaN(strength) ? null : { name, strength },
    };
}

const WEAK = 0.3; // |r|; the two share less than a tenth of their variance

/** The confound of a component if the two are clearly correlated. */
export function clearConfound({ confound }: Measures): Measures['confound'] {
    return confound && confound.strength >= WEAK ? confound : null;
}
