import type { InputNote } from './input_note';

/** What "..._desc-ICA_decomposition.json" says about a run. A key that a version of znica does not write is absent. */
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
    };
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
    Predictors: string[];
    Regions: string[];
    Components: ComponentFacts[];
    Eigenvalues: number[];
    ElapsedSeconds: { Reading: number; Plugin: number; Total: number };
    PeakMemoryBytes: number;
    Repeats?: { Runs?: number; Converged?: number };
}

export interface ComponentFacts {
    Name: string;
    PluginName: string;
    Iterations?: number;
    Restarts?: number;
    ElapsedSeconds?: number;
    StabilityIndex?: number | null; // Iq over the repeats; absent when there were none
    StabilityRuns?: number; // in how many of them the component's cluster appears
}

/**
 * Share of the first eigenvalue in the variance, in per cent; null where it is not among the kept ones. Voxels keep their
 * mean over time, so the first eigenvalue is little else than the mean image, and most of the variance.
 */
export function meanImageShare({ Settings, Eigenvalues }: Decomposition): number | null {
    const total = Eigenvalues.reduce((sum, value) => sum + value, 0);
    return Settings.FirstEigenvalue === 1 && total > 0 ? (100 * Eigenvalues[0]) / total : null;
}
