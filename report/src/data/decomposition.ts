import type { InputNote } from './input_note';

/** Contents of "..._desc-ICA_decomposition.json". Keys are absent where the version of znica did not write them. */
export interface Decomposition {
    GeneratedBy: { Name: string; Version: string; Plugin: { Name: string; Version: string; File: string } };
    Input: {
        File: string;
        Size: [number, number, number];
        Volumes: number;
        RepetitionTimeMilliseconds: number;
        StoredType?: string;
        VoxelsAnalysed: number;
        VoxelsDropped?: { NotFinite?: number; Constant?: number };
        Notes?: (InputNote | string)[];
        DummyScans?: number;
        Oriented?: boolean; // has a sform or qform
    };
    Preparation?: Preparation;
    Settings: {
        Mask: string; // "auto", "none" or a path
        Components: number;
        ComponentsAsked?: number | string; // a number, "auto" or "max"
        FirstEigenvalue: number;
        LastEigenvalue: number;
        Nonlinearity: string;
        Epsilon: number;
        MaxIterations: number;
        DesignMatrix: string | null;
        DesignFormat?: string | null; // "BIDS events", "table" and others
        Regions: string | null;
        ClusterSize: number | null;
        ZThreshold: number;
        Label: string | null;
        Seed?: number | null;
        [key: string]: unknown;
    };
    Seed?: number | null;
    ComponentEstimate?: { MDL: number; Laplace: number; OptimalThreshold: number; EffectiveSamples: number } | null;
    ComponentsFound: number;
    RetainedVariancePercent: number | null;
    RetainedVarianceOverTimePercent?: number | null; // without the mean image
    Predictors: string[];
    Confounds?: string[];
    Regions: string[];
    Components: ComponentFacts[];
    Eigenvalues: number[];
    ElapsedSeconds: { Reading: number; Plugin: number; Total: number };
    PeakMemoryBytes: number;
    Repeats?: { Runs?: number; Converged?: number };
}

/** What was done to the time courses before the analysis. Widths in mm, full at half maximum; 0 stands for nothing. */
export interface Preparation {
    SmoothingAsked: number | 'auto';
    SmoothingFWHM: number;
    EstimatedFWHM: [number, number, number] | null; // null: not estimated
    HighPassSeconds: number;
    CosinesRemoved: number;
    Scaling: string; // "none", "percent" or "sd"
}

export interface ComponentFacts {
    Name: string;
    PluginName: string;
    Iterations?: number;
    Restarts?: number;
    ElapsedSeconds?: number;
    StabilityIndex?: number | null; // Iq over the repeats; absent when there were none
    StabilityRuns?: number; // number of repeats in which the component's cluster appears
}

/** Whether the temporal mean of each voxel was removed, so that no component represents the mean image. */
export function lacksMeanImage({ Preparation: preparation }: Decomposition): boolean {
    return preparation?.Scaling === 'sd';
}

/**
 * Share of the first eigenvalue in the variance, in per cent; null when it was not kept. Unless the temporal mean of
 * each voxel was removed, the first eigenvalue mostly represents the mean image and accounts for most of the variance.
 */
export function meanImageShare(facts: Decomposition): number | null {
    if (lacksMeanImage(facts)) return null;
    const total = facts.Eigenvalues.reduce((sum, value) => sum + value, 0);
    return facts.Settings.FirstEigenvalue === 1 && total > 0 ? (100 * facts.Eigenvalues[0]) / total : null;
}
