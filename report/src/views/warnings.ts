import { bandsFor, isDefined } from '../data/bands';
import type { Decomposition } from '../data/decomposition';
import { inputNotes } from '../data/input_note';
import { FINGERPRINT, METRICS } from '../data/metrics';
import type { Run } from '../data/run';
import { grouped, plural } from '../numbers';

const CLUSTERING = 'degree_of_clustering';

/** What a reader must know before trusting the numbers, in plain words. */
export function warningsOf(run: Run): string[] {
    const { facts } = run;
    const asked = facts.Settings.Components;
    const warnings: string[] = [];
    if (facts.ComponentsFound < asked) {
        warnings.push(
            `The run stopped early: ${facts.ComponentsFound} of ${asked} components converged within `
                + `${facts.Settings.MaxIterations} iterations. The others may still be mixed into the ones shown.`,
        );
    }
    warnings.push(...droppedWarning(facts));
    if (facts.Settings.Mask === 'none') {
        warnings.push('No mask was used: every voxel of the grid was analysed, including those outside the head.');
    }
    // The page explains the bands itself, also for results without notes.
    const notes = inputNotes(facts.Input.Notes).filter(({ Code }) => Code !== 'frequency-bands');
    warnings.push(...notes.map(({ Text }) => Text));
    warnings.push(...repetitionTimeWarning(run.trSeconds), ...degenerateWarnings(run));
    if (!run.hasMean) warnings.push('The result has no mean image; the maps are drawn over the shape of the mask.');
    return warnings;
}

function droppedWarning({ Input: { VoxelsDropped: dropped } }: Decomposition): string[] {
    const notFinite = dropped?.NotFinite ?? 0;
    const constant = dropped?.Constant ?? 0;
    if (notFinite + constant === 0) return [];
    const reasons = [
        notFinite > 0 && `${grouped(notFinite)} with non-finite values`,
        constant > 0 && `${grouped(constant)} constant over time`,
    ].filter((reason) => reason !== false);
    return [
        `${plural(notFinite + constant, 'voxel')} of the mask ${notFinite + constant === 1 ? 'was' : 'were'} excluded: `
            + `${reasons.join(', ')}.`,
    ];
}

function repetitionTimeWarning(seconds: number): string[] {
    const { exact, nyquistHz, ranges, wholeSeconds: whole } = bandsFor(seconds);
    if (whole < 1) {
        return [
            `The repetition time of ${seconds} s is below one second, which the plug-in takes as 0: the five power `
                + 'bands are undefined.',
        ];
    }
    const few =
        ranges.length === 5
            ? []
            : [
                  `At a repetition time of ${seconds} s the spectrum ends at ${nyquistHz.toFixed(3)} Hz: `
                      + `only ${ranges.length} of the five power bands are in use; the others are undefined.`,
              ];
    return exact
        ? few
        : [
              ...few,
              `The plug-in takes the repetition time of ${seconds} s as ${whole} s for the power spectrum: its `
                  + 'frequencies, and the limits of the bands, are '
                  + `${((seconds / whole - 1) * 100).toFixed(0)} % too high.`,
          ];
}

function degenerateWarnings(run: Run): string[] {
    const { components } = run;
    const bands = bandsFor(run.trSeconds);
    const without = METRICS.filter(
        (metric, m) =>
            isDefined(metric.column, bands) && components.some((component) => !Number.isFinite(component.values[m])),
    );
    const warnings: string[] = [];
    if (without.length > 0) {
        const names = without.map((metric) => metric.short).join(', ');
        warnings.push(`Some components have no value (n/a) for ${names}, because it could not be rescaled.`);
    }
    const skipped = run.facts.Settings.ClusterSize === null;
    const same = METRICS.filter(
        (metric, m) =>
            FINGERPRINT.includes(metric)
            && !(skipped && metric.column === CLUSTERING)
            && components.every((component) => component.values[m] === components[0].values[m]),
    );
    if (components.length === 1) {
        warnings.push('There is only a single component: parameters rescaled across components say nothing about it.');
    } else if (same.length > 0) {
        warnings.push(
            `${same.map((metric) => metric.short).join(', ')}: the same for every component, so not useful for `
                + 'distinguishing them.',
        );
    }
    if (skipped) warnings.push('The degree of clustering was not estimated; it is 0 for every component.');
    return warnings;
}

/** Notes that are not warnings, such as what was not requested. */
export function notesOf(run: Run): string[] {
    const notes: string[] = [];
    if (run.facts.Settings.Mask === 'auto') notes.push('The mask was derived from the temporal mean image.');
    if (!run.facts.Settings.DesignMatrix) notes.push('No design matrix was given, so there are no predictor matches.');
    if (!run.facts.Settings.Regions) notes.push('No regions were given, so there are no spatial template matches.');
    if (run.facts.Input.DummyScans) {
        const { DummyScans: dummies } = run.facts.Input;
        notes.push(`${plural(dummies, 'initial volume')} ${dummies === 1 ? 'was' : 'were'} discarded.`);
    }
    return notes;
}
