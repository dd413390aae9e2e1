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
    };
    Settings: {
        Mask: string; // "auto", "none" or a path
        Components: number;
        ComponentsAsked?: number | string; // a number, "auto" or "max"
        FirstEigenvalue: number;
        LastEigenvalue: number;
        Approach?: string; // "deflation" or "symmetric"; absent: deflation
        Starts?: number | null; // of the symmetric approach
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
    SymmetricEstimate?: SymmetricFacts;
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

/** How the symmetric approach went: the starts, and the chosen one on all voxels. */
export interface SymmetricFacts {
    StartVoxels: number;
    Starts: { Iterations: number; Converged: boolean; Negentropy: number; Agreement: number }[];
    ChosenStart: number; // from 1
    Iterations: number;
    Negentropy: number;
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

/**
 * Share of the first eigenvalue in the variance, in per cent; null when it was not kept. The temporal mean of each
 * voxel is not removed, so the first eigenvalue mostly represents the mean image and accounts for most of the variance.
 */
export function meanImageShare({ Settings, Eigenvalues }: Decomposition): number | null {
    const total = Eigenvalues.reduce((sum, value) => sum + value, 0);
    return Settings.FirstEigenvalue === 1 && total > 0 ? (100 * Eigenvalues[0]) / total : null;
}
