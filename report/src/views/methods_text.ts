import { edges } from '../data/affine';
import type { Run } from '../data/run';
import { grouped, plural, short } from '../numbers';
import { seedOf } from './summary';

const NONLINEARITY: Record<string, string> = {
    tanh: 'the hyperbolic tangent', gauss: 'the Gaussian nonlinearity y\u00b7exp(\u2212y\u00b2/2)', cube: 'the cubic nonlinearity',
};

/** A paragraph for the methods section of a paper, with the numbers of this run. */
export function methodsText(run: Run): string {
    const { facts } = run;
    const { Input: input, Settings: settings, GeneratedBy: by } = facts;
    const mm = edges(run.grid.affine).map((edge) => short(edge)).join(' \u00d7 ');
    const range = settings.FirstEigenvalue === 1
        ? `the ${settings.LastEigenvalue} largest principal components`
        : `principal components ${settings.FirstEigenvalue} to ${settings.LastEigenvalue}`;
    const kept = facts.RetainedVariancePercent === null ? '' : ` (${facts.RetainedVariancePercent.toFixed(1)} % of the variance)`;
    const seed = seedOf(run);
    const sentences = [
        `Spatial independent component analysis (McKeown et al., 1998) was performed with znica ${by.Version} (plug-in `
        + `version ${by.Plugin.Version}) on ${grouped(input.Volumes)} volumes (TR ${short(run.trSeconds, 4)} s; voxel size ${mm} mm).`,
        `The time courses of ${grouped(run.voxelsInside)} voxels${settings.Mask ? ' inside a mask' : ''} entered the `
        + 'analysis; the spatial mean of every volume was removed.',
        `The data were reduced to ${range} of the temporal covariance${kept} and whitened.`,
        `Components were extracted one after another by the fixed-point algorithm FastICA in its deflation form `
        + `(Hyv\u00e4rinen, 1999) with ${NONLINEARITY[settings.Nonlinearity] ?? settings.Nonlinearity}, a convergence limit of `
        + `${short(settings.Epsilon)} and at most ${settings.MaxIterations} iterations a component`
        + `${seed === null ? '' : ` (random seed ${seed})`}; ${facts.ComponentsFound} of ${settings.Components} components converged.`,
        'Maps are the projections of the centred data on the separating vectors, with unit variance over the voxels, and '
        + 'are shown as z without further scaling.',
        'Every component was characterised by the spread of its time course, the degree of spatial clustering'
        + `${settings.ClusterSize === null ? ' (not estimated)' : ` (clusters of at least ${plural(settings.ClusterSize, 'voxel')} beyond |z| = ${short(settings.ZThreshold)})`}, `
        + 'skewness, kurtosis and entropy of its map, lag-1 autocorrelation and entropy of its time course, and the power '
        + 'of its time course in five frequency bands (Welch, 1967), each rescaled across the components of the run.',
    ];
    if (facts.Predictors.length > 0) {
        sentences.push(`Time courses were correlated with ${plural(facts.Predictors.length, 'predictor')} of a design matrix.`);
    }
    if (facts.Regions.length > 0) {
        sentences.push(`Maps were correlated with ${plural(facts.Regions.length, 'region')} of interest.`);
    }
    return sentences.join(' ');
}

export const REFERENCES = [
    'Hyv\u00e4rinen, A. (1999). Fast and robust fixed-point algorithms for independent component analysis. IEEE Transactions '
    + 'on Neural Networks, 10(3), 626\u2013634.',
    'McKeown, M. J., Makeig, S., Brown, G. G., Jung, T.-P., Kindermann, S. S., Bell, A. J., & Sejnowski, T. J. (1998). '
    + 'Analysis of fMRI data by blind separation into independent spatial components. Human Brain Mapping, 6(3), 160\u2013188.',
    'Welch, P. D. (1967). The use of fast Fourier transform for the estimation of power spectra: a method based on time '
    + 'averaging over short, modified periodograms. IEEE Transactions on Audio and Electroacoustics, 15(2), 70\u201373.',
];
