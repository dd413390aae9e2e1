import type { Run } from '../data/run';

export const FASTICA =
    'Hyv\u00e4rinen, A. (1999). Fast and robust fixed-point algorithms for independent component analysis. IEEE '
    + 'Transactions on Neural Networks, 10(3), 626\u2013634.';
export const PARALLEL_ANALYSIS =
    'Dobriban, E., & Owen, A. B. (2019). Deterministic parallel analysis: an improved method for selecting factors and '
    + 'principal components. Journal of the Royal Statistical Society B, 81(1), 163\u2013183.';
export const ICASSO =
    'Himberg, J., Hyv\u00e4rinen, A., & Esposito, F. (2004). Validating the independent components of neuroimaging '
    + 'time series via clustering and visualization. NeuroImage, 22(3), 1214\u20131222.';
const SPATIAL_ICA =
    'McKeown, M. J., Makeig, S., Brown, G. G., Jung, T.-P., Kindermann, S. S., Bell, A. J., & Sejnowski, T. J. '
    + '(1998). Analysis of fMRI data by blind separation into independent spatial components. Human Brain Mapping, '
    + '6(3), 160\u2013188.';
const MDL =
    'Wax, M., & Kailath, T. (1985). Detection of signals by information theoretic criteria. IEEE Transactions on '
    + 'Acoustics, Speech, and Signal Processing, 33(2), 387\u2013392.';
const ANDERSON =
    'Walker, H. F., & Ni, P. (2011). Anderson acceleration for fixed-point iterations. SIAM Journal on Numerical '
    + 'Analysis, 49(4), 1715\u20131735.';
const WELCH =
    'Welch, P. D. (1967). The use of fast Fourier transform for the estimation of power spectra: a method based on '
    + 'time averaging over short, modified periodograms. IEEE Transactions on Audio and Electroacoustics, '
    + '15(2), 70\u201373.';

/** The references of this run's methods paragraph, by author. */
export function referencesOf({ facts }: Run): string[] {
    const estimate = facts.ComponentEstimate;
    const isParallel = estimate?.ParallelAnalysis !== undefined;
    return [
        ...(isParallel ? [PARALLEL_ANALYSIS] : []),
        ...(facts.Repeats ? [ICASSO] : []),
        FASTICA,
        SPATIAL_ICA,
        ...(facts.SymmetricEstimate ? [ANDERSON] : []),
        ...(estimate && !isParallel ? [MDL] : []),
        WELCH,
    ];
}
