import type { Denoising } from '../data/denoising';
import { plural, short } from '../numbers';

const GRIFFANTI =
    'Griffanti, L., Salimi-Khorshidi, G., Beckmann, C. F., Auerbach, E. J., Douaud, G., Sexton, C. E., \u2026 Smith, '
    + 'S. M. (2014). ICA-based artefact removal and accelerated fMRI acquisition for improved resting state network '
    + 'imaging. NeuroImage, 95, 232\u2013247.';
const PRUIM =
    'Pruim, R. H. R., Mennes, M., van Rooij, D., Llera, A., Buitelaar, J. K., & Beckmann, C. F. (2015). ICA-AROMA: a '
    + 'robust ICA-based strategy for removing motion artifacts from fMRI data. NeuroImage, 112, 267\u2013277.';

const COURSES = {
    nonaggr: 'the time courses of all components',
    aggr: 'the time courses of the rejected components',
    orthaggr: 'what the kept components do not explain of the time courses of the rejected ones',
};
const SOURCES = {
    nonaggr: ' (non-aggressive; Griffanti et al., 2014; Pruim et al., 2015)',
    aggr: ' (aggressive; Griffanti et al., 2014; Pruim et al., 2015)',
    orthaggr: '',
};

/** "a", "a and b", "a, b and c". */
function listed(items: string[]): string {
    return items.length < 2 ? items.join('') : `${items.slice(0, -1).join(', ')} and ${items[items.length - 1]}`;
}

/** How the image was denoised, for the methods section of a paper. */
export function denoisingText({ method, parts, quality, high_pass_seconds: cutOff }: Denoising): string {
    const components = parts.filter(({ name }) => name.startsWith('ICA_'));
    const rejected = components.filter(({ removed }) => removed).length;
    const confounds = parts.find(({ name }) => name === 'confounds');
    const filter = parts.find(({ name }) => name === 'high_pass');
    if (rejected === 0 && !confounds && !filter) {
        return `None of the ${plural(components.length, 'component')} was rejected, so nothing was removed from the image.`;
    }
    const regressed = [
        ...(rejected > 0 || method === 'nonaggr' ? [COURSES[method]] : []),
        ...(confounds ? [`the confounds ${confounds.reason}`] : []),
        ...(filter ? [`${filter.reason} with periods above ${short(cutOff)} s`] : []),
    ];
    const removed = [
        ...(rejected > 0 ? ['the rejected components'] : []),
        ...(confounds ? ['confounds'] : []),
        ...(filter ? ['cosines'] : []),
    ];
    const fit = method === 'nonaggr' ? `the part of the fit that belongs to ${listed(removed)}` : 'the fit';
    const degrees = quality.find(({ measure }) => measure === 'degrees_of_freedom');
    const all = plural(components.length, 'component');
    const what =
        rejected > 0
            ? `${rejected} of ${all} ${rejected === 1 ? 'was' : 'were'} rejected and removed from the image`
            : `None of the ${all} was rejected, but ${listed(removed)} were removed from the image`;
    return (
        `${what}: the time course of every voxel was regressed on ${listed(regressed)}, and ${fit} was `
        + `subtracted${SOURCES[method]}.`
        + (degrees ? ` This left ${degrees.after} of ${degrees.before} degrees of freedom.` : '')
    );
}

export function denoisingReferences({ method, parts }: Denoising): string[] {
    return method === 'orthaggr' || !parts.some(({ removed }) => removed) ? [] : [GRIFFANTI, PRUIM];
}
