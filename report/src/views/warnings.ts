import { FINGERPRINT, METRICS } from '../data/metrics';
import type { Run } from '../data/run';
import { grouped, plural } from '../numbers';

/** What a reader has to know before believing the numbers, in plain words. */
export function warningsOf(run: Run): string[] {
    const { facts } = run;
    const asked = facts.Settings.Components;
    const warnings: string[] = [];
    if (facts.ComponentsFound < asked) {
        warnings.push(`The run gave up early: ${facts.ComponentsFound} of ${asked} components converged within `
            + `${facts.Settings.MaxIterations} iterations. The others may still be mixed into the ones shown.`);
    }
    if (facts.Input.VoxelsDropped) {
        warnings.push(`${plural(facts.Input.VoxelsDropped, 'voxel')} of the mask were left out, because they are `
            + 'constant or not finite in some volume.');
    }
    if (!facts.Settings.Mask) warnings.push('No mask was given: every voxel of the grid was analysed unless the run chose its own mask.');
    warnings.push(...repetitionTimeWarning(run.trSeconds), ...degenerateWarnings(run));
    if (!run.hasMean) warnings.push('The result holds no mean image; the maps are drawn over the outline of the mask.');
    return warnings;
}

function repetitionTimeWarning(seconds: number): string[] {
    const whole = Math.floor(seconds);
    if (whole === seconds) return [];
    if (whole < 1) {
        return [`The repetition time of ${seconds} s is below one second, which the plug-in counts as 0: the five power `
            + 'bands are undefined.'];
    }
    return [`The plug-in counts the repetition time of ${seconds} s as ${whole} s for the power spectrum: its `
        + `frequencies, and the limits of the bands, are ${((seconds / whole - 1) * 100).toFixed(0)} % too high.`];
}

function degenerateWarnings(run: Run): string[] {
    const { components } = run;
    const without = METRICS.filter((_, m) => components.some((component) => !Number.isFinite(component.values[m])));
    const warnings: string[] = [];
    if (without.length > 0) {
        const names = without.map((metric) => metric.short).join(', ');
        warnings.push(`Some components have no number (n/a) for ${names}: the value behind it could not be rescaled.`);
    }
    const same = METRICS.filter((metric, m) => components.length > 1 && FINGERPRINT.includes(metric)
        && components.every((component) => component.values[m] === components[0].values[m]));
    if (same.length > 0 && run.facts.Settings.ClusterSize !== null) {
        warnings.push(`${same.map((metric) => metric.short).join(', ')}: the same for every component, so of no help to `
            + 'tell them apart.');
    }
    if (run.facts.Settings.ClusterSize === null) {
        warnings.push('The degree of clustering was skipped; it is 0 for every component.');
    }
    return warnings;
}

/** Notes that are no warnings: what was simply not asked for. */
export function notesOf(run: Run): string[] {
    const notes: string[] = [];
    if (!run.facts.Settings.DesignMatrix) notes.push('No design matrix was given, so no predictor can match.');
    if (!run.facts.Settings.Regions) notes.push('No regions were given, so no spatial template can match.');
    if (run.facts.Input.DummyScans) notes.push(`${grouped(run.facts.Input.DummyScans)} volumes at the start were left out.`);
    return notes;
}
