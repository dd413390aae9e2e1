import { edges } from '../data/affine';
import { bandsFor } from '../data/bands';
import { lacksMeanImage, meanImageShare, type SymmetricFacts } from '../data/decomposition';
import type { Run } from '../data/run';
import { plural, short } from '../numbers';
import { seedOf } from './summary';

const NONLINEARITY: Record<string, string> = {
    tanh: 'the hyperbolic tangent',
    gauss: 'the Gaussian nonlinearity y\u00b7exp(\u2212y\u00b2/2)',
    cube: 'the cubic nonlinearity',
};
const COUNTS = ['no', 'one', 'two', 'three', 'four', 'five'];

/** A paragraph for the methods section of a paper, with the numbers of this run. */
export function methodsText(run: Run): string {
    return [
        input(run),
        voxels(run),
        ...preparation(run),
        ...componentCount(run),
        reduction(run),
        extraction(run),
        ...repeats(run),
        maps(run),
        fingerprint(run),
        bandPowers(run),
        ...measures(run),
        ...matches(run),
    ].join(' ');
}

function input(run: Run): string {
    const { Input: from, GeneratedBy: by } = run.facts;
    const mm = edges(run.grid.affine)
        .map((edge) => short(edge))
        .join(' \u00d7 ');
    const dummies = from.DummyScans
        ? `; ${plural(from.DummyScans, 'initial volume')} `
          + `${from.DummyScans === 1 ? 'was' : 'were'} discarded beforehand`
        : '';
    return (
        'Spatial independent component analysis (McKeown et al., 1998) was performed with znica '
        + `${by.Version} (plug-in version ${by.Plugin.Version}) on ${plural(from.Volumes, 'volume')} `
        + `(TR ${short(run.trSeconds, 4)} s; voxel size ${mm} mm)${dummies}.`
    );
}

// The automatic mask then has every voxel, also those that were excluded afterwards.
function foundNoBrain({ grid, voxelsInside, facts }: Run): boolean {
    const { NotFinite = 0, Constant = 0 } = facts.Input.VoxelsDropped ?? {};
    const all = grid.size[0] * grid.size[1] * grid.size[2];
    return facts.Settings.Mask === 'auto' && voxelsInside + NotFinite + Constant === all;
}

function voxels(run: Run): string {
    const where: Record<string, string> = {
        none: ' of the whole grid, without a mask,',
        auto: foundNoBrain(run)
            ? ' of the whole grid, because the temporal mean image did not show where the brain is,'
            : ' inside a brain mask derived from the temporal mean image',
    };
    return (
        `The time courses of ${plural(run.voxelsInside, 'voxel')}${where[run.facts.Settings.Mask] ?? ' inside a mask'} `
        + 'entered the analysis; the spatial mean of each volume was removed'
        + `${lacksMeanImage(run.facts) ? '' : ', the temporal mean of each voxel was not'}.`
    );
}

function preparation({ facts: { Preparation: done } }: Run): string[] {
    if (!done) return [];
    const estimated = done.SmoothingAsked === 'auto' ? ', chosen from the smoothness of the data' : '';
    const steps = [
        done.SmoothingFWHM > 0
            && `smoothed within the mask with a Gaussian of ${short(done.SmoothingFWHM)} mm full width at half `
                + `maximum${estimated}`,
        done.HighPassSeconds > 0
            && `high-pass filtered by removing ${plural(done.CosinesRemoved, 'discrete cosine')} with periods above `
                + `${short(done.HighPassSeconds)} s`,
        done.Scaling === 'percent' && 'scaled to per cent of the temporal mean of each voxel',
        done.Scaling === 'sd' && 'scaled to zero mean and unit variance over time in each voxel',
    ].filter((step) => step !== false);
    return steps.length > 0 ? [`Beforehand, the data were ${steps.join('; then ')}.`] : [];
}

function componentCount({ facts: { ComponentEstimate: estimate } }: Run): string[] {
    if (!estimate) return [];
    if (estimate.ParallelAnalysis === undefined) {
        // a result of an earlier version
        return [
            `The number of components, ${estimate.MDL}, was estimated from the eigenvalues by minimum description `
                + `length (Wax & Kailath, 1985), assuming ${estimate.EffectiveSamples.toFixed(0)} effectively `
                + 'independent voxels.',
        ];
    }
    const caveat =
        estimate.Noise?.HasEdge === false
            ? ' No clear gap separated the eigenvalues of signal from those of noise, so the number is approximate.'
            : '';
    return [
        `The number of components, ${estimate.ParallelAnalysis}, was estimated by parallel analysis (Dobriban & Owen, `
            + '2019): after variance normalisation (the same noise variance in all voxels), that many eigenvalues were '
            + 'clearly above the largest one expected of noise with the spatial smoothness and temporal '
            + `autocorrelation of the residuals.${caveat}`,
    ];
}

function reduction({ facts }: Run): string {
    const { FirstEigenvalue: first, LastEigenvalue: last } = facts.Settings;
    const many =
        first === 1
            ? last === 1
                ? 'the largest principal component'
                : `the ${last} largest principal components`
            : first === last
              ? `principal component ${first}`
              : `principal components ${first} to ${last}`;
    const share = keptVariance(facts);
    return `The data were reduced to ${many} of the temporal covariance${share && ` (${share})`} and whitened.`;
}

function keptVariance(facts: Run['facts']): string {
    const overTime = facts.RetainedVarianceOverTimePercent ?? null;
    if (overTime !== null) return `${overTime.toFixed(1)} % of the variance over time`;
    const kept = facts.RetainedVariancePercent;
    const mean = meanImageShare(facts);
    const ofMean = mean === null ? '' : `; ${mean.toFixed(1)} % in the first, which represents the mean image`;
    return kept === null ? '' : `${kept.toFixed(1)} % of the variance${ofMean}`;
}

function extraction(run: Run): string {
    const {
        facts,
        facts: { Settings: settings },
    } = run;
    const seed = seedOf(run);
    if (facts.SymmetricEstimate) return symmetricEstimate(run, facts.SymmetricEstimate);
    return (
        'Components were extracted one after another by the fixed-point algorithm FastICA in its deflation form '
        + `(Hyv\u00e4rinen, 1999) with ${NONLINEARITY[settings.Nonlinearity] ?? settings.Nonlinearity}, a convergence `
        + `limit of ${short(settings.Epsilon)}, at most ${plural(settings.MaxIterations, 'iteration')} per component `
        + `and at most five restarts in the whole run${seed === null ? '' : ` (random seed ${seed})`}; `
        + `${facts.ComponentsFound} of ${plural(settings.Components, 'component')} converged.`
    );
}

function symmetricEstimate(run: Run, estimate: SymmetricFacts): string {
    const {
        facts,
        facts: { Settings: settings },
    } = run;
    const seed = seedOf(run);
    const many = estimate.Starts.length;
    const part =
        estimate.StartVoxels < facts.Input.VoxelsAnalysed
            ? ` on ${plural(estimate.StartVoxels, 'voxel')} chosen at random`
            : '';
    const chosen =
        many === 1
            ? `One random start was followed${part} and finished`
            : `Of ${many} random starts${part}, the one with the largest negentropy that converged was finished`;
    return (
        'All components were estimated together by the fixed-point algorithm FastICA with symmetric decorrelation '
        + `(Hyv\u00e4rinen, 1999) with ${NONLINEARITY[settings.Nonlinearity] ?? settings.Nonlinearity}, a convergence `
        + `limit of ${short(settings.Epsilon)} for every component, and at most `
        + `${plural(settings.MaxIterations, 'iteration')}${seed === null ? '' : ` (random seed ${seed})`}. `
        + `${chosen} on all voxels in ${plural(estimate.Iterations, 'iteration')}, sped up by Anderson mixing (Walker `
        + `& Ni, 2011); ${facts.ComponentsFound} of ${plural(settings.Components, 'component')} converged. They are in `
        + 'descending order of explained variance.'
    );
}

function repeats({ facts: { Repeats: repeated } }: Run): string[] {
    return repeated?.Runs === undefined
        ? []
        : [
              `The extraction was run ${repeated.Runs} times from different random starting points; the components of `
                  + 'all runs were clustered by their spatial correlation, and the stability of each is the quality '
                  + 'index Iq of its cluster (Himberg et al., 2004).',
          ];
}

function maps({ facts }: Run): string {
    const sign = facts.SymmetricEstimate
        ? 'The sign of a component was chosen such that the third moment of its map is positive'
        : 'The sign of a component is arbitrary';
    return (
        'Maps are the projections of the centred data onto the separating vectors, with unit variance over the voxels, '
        + `and are shown as z without further scaling. ${sign}: only the product of its `
        + 'map and its time course is meaningful.'
    );
}

function fingerprint({ facts: { Settings: settings } }: Run): string {
    const clusters =
        settings.ClusterSize === null
            ? ' (not estimated)'
            : ` (clusters of at least ${plural(settings.ClusterSize, 'voxel')} `
              + `beyond |z| = ${short(settings.ZThreshold)})`;
    return (
        'Each component was characterised by the spread of its time course, the degree of spatial '
        + `clustering${clusters}, `
        + 'the lag-1 autocorrelation of its time course, and, each rescaled across the components of the run, the '
        + 'skewness, kurtosis and entropy of its map and the entropy of its time course.'
    );
}

function bandPowers(run: Run): string {
    const { ranges, exact, wholeSeconds } = bandsFor(run.trSeconds);
    if (ranges.length === 0)
        return 'The power in frequency bands is not defined at a repetition time below one second.';
    const clock = exact ? '' : ` with the repetition time taken as ${wholeSeconds} s`;
    return (
        `The power of its time course was estimated in ${COUNTS[ranges.length]} frequency bands (Welch, 1967)${clock}, `
        + 'relative to the strongest band of the component, and rescaled across the components of the run.'
    );
}

function measures({ components }: Run): string[] {
    return components.some((component) => !Number.isNaN(component.measures.explainedPercent))
        ? [
              'The variance explained by a component is the sum of squares of its map times its time course, both '
                  + 'without the mean over time, relative to that of the analysed data.',
          ]
        : [];
}

function matches({ facts }: Run): string[] {
    return [
        facts.Predictors.length > 0
            && `Time courses were correlated with ${plural(facts.Predictors.length, 'predictor')} ${
                facts.Settings.DesignFormat === 'BIDS events'
                    ? '(the events of each trial type, convolved with a canonical double-gamma haemodynamic response).'
                    : 'from a design matrix.'
            }`,
        (facts.Confounds?.length ?? 0) > 0
            && `${facts.Predictors.length > 0 ? 'They were also' : 'Time courses were'} correlated with ${plural(facts.Confounds!.length, 'confound')}.`,
        facts.Regions.length > 0 && `Maps were correlated with ${plural(facts.Regions.length, 'region')} of interest.`,
    ].filter((sentence) => sentence !== false);
}
