import { edges } from '../data/affine';
import { plural, short } from '../numbers';
import { FASTICA, ICASSO, PARALLEL_ANALYSIS } from '../views/references';
import { FEWEST_FOR_OUTLIERS, type Group } from './group';

/** A paragraph for the methods section of a paper, with the numbers of this study. */
export function methodsText(group: Group): string {
    return [input(group), preparation(group), reduction(group), separation(group), regression(), tables(group)].join(
        ' ',
    );
}

function input({ runs, plan, grid, voxelsInside, version }: Group): string {
    const volumes = runs.map((run) => run.volumes);
    const [least, most] = [Math.min(...volumes), Math.max(...volumes)];
    const mm = edges(grid.affine).map((edge) => short(edge));
    const dummies = plan.DummyScans
        ? `; ${plural(plan.DummyScans, 'initial volume')} of every run ${plan.DummyScans === 1 ? 'was' : 'were'} discarded`
        : '';
    return (
        `Group spatial independent component analysis was performed with znica ${version} on ${plural(runs.length, 'run')} `
        + `of ${least === most ? least : `${least} to ${most}`} volumes (TR ${short(plan.RepetitionTime, 4)} s; voxel size `
        + `${mm.join(' \u00d7 ')} mm)${dummies}. The analysis was restricted to the ${plural(voxelsInside, 'voxel')} that `
        + 'all runs had in common.'
    );
}

function preparation({ plan: { Preparation: done } }: Group): string {
    const steps = [
        done.SmoothingFWHM > 0
            && `smoothed within this mask with a Gaussian of ${short(done.SmoothingFWHM)} mm full width at half maximum`,
        done.HighPassCutOff > 0
            && `high-pass filtered by removing discrete cosines with periods above ${short(done.HighPassCutOff)} s`,
        done.Scaling === 'percent' && 'scaled to per cent of the temporal mean of each voxel',
        done.Scaling === 'sd' && 'scaled to unit variance over time in each voxel',
        'centred over time in each voxel and over the voxels in each volume',
    ].filter((step) => step !== false);
    return `The data of each run were ${steps.join('; then ')}.`;
}

function reduction({ plan, separation: { ComponentsRequested, ComponentsOfRuns } }: Group): string {
    const estimate =
        ComponentsOfRuns === undefined
            ? ''
            : ' This number is the median of those of the single runs, each estimated by parallel analysis (Dobriban & '
              + 'Owen, 2019).';
    return (
        'The runs were concatenated over time and reduced by incremental group principal component analysis (Smith et '
        + `al., 2014), which kept ${plan.RowsKept} components; the ${ComponentsRequested} leading ones entered the `
        + `separation.${estimate}`
    );
}

function separation({ components, separation: facts }: Group): string {
    const found =
        components.length === facts.ComponentsRequested
            ? `${plural(components.length, 'component')}`
            : `${components.length} of ${facts.ComponentsRequested} components`;
    const repeats =
        facts.Repeats > 1
            ? ` The separation was repeated ${facts.Repeats} times from different random starts, and the stability of the `
              + 'components was assessed by clustering them (Himberg et al., 2004).'
            : '';
    return `FastICA (Hyv\u00e4rinen, 1999) in its symmetric form found ${found}.${repeats}`;
}

function regression(): string {
    return (
        'Dual regression (Nickerson et al., 2017) gave the courses and maps of every run: regressing the data on the group '
        + 'maps (mean 0, variance 1) gave a course per component, whose standard deviation is the amplitude; regressing '
        + 'the data on these courses, scaled to unit variance, gave the maps of the run.'
    );
}

function tables({ runs }: Group): string {
    const outliers =
        runs.length < FEWEST_FOR_OUTLIERS
            ? ''
            : 'Amplitudes more than 3.5 robust standard deviations (1.4826 times the median absolute deviation) from the '
              + 'median of all runs were marked as outliers. ';
    return `${outliers}Correlations between courses were averaged over the runs as Fisher\u2019s z.`;
}

/** The references of the paragraph, by author. */
export function references({ separation: facts }: Group): string[] {
    const estimated = facts.ComponentsOfRuns !== undefined;
    return [
        ...(estimated ? [PARALLEL_ANALYSIS] : []),
        ...(facts.Repeats > 1 ? [ICASSO] : []),
        FASTICA,
        DUAL_REGRESSION,
        GROUP_PCA,
    ];
}

const DUAL_REGRESSION =
    'Nickerson, L. D., Smith, S. M., \u00d6ng\u00fcr, D., & Beckmann, C. F. (2017). Using dual regression to investigate '
    + 'network shape and amplitude in functional connectivity analyses. Frontiers in Neuroscience, 11, 115.';
const GROUP_PCA =
    'Smith, S. M., Hyv\u00e4rinen, A., Varoquaux, G., Miller, K. L., & Beckmann, C. F. (2014). Group-PCA for very large '
    + 'fMRI datasets. NeuroImage, 101, 738\u2013749.';
