import { bandsFor, isDefined } from '../data/bands';
import type { Decomposition } from '../data/decomposition';
import { inputNotes } from '../data/input_note';
import { FINGERPRINT, METRICS } from '../data/metrics';
import type { Run } from '../data/run';
import { grouped, plural } from '../numbers';

const CLUSTERING = 'degree_of_clustering';

/** What a reader has to know before believing the numbers, in plain words. */
export function warningsOf(run: Run): string[] {
    const { facts } = run;
    const asked = facts.Settings.Components;
    const warnings: string[] = [];
    if (facts.ComponentsFound < asked) {
        warnings.push(
            `The run gave up early: ${facts.ComponentsFound} of ${asked} components converged within `
                + `${facts.Settings.MaxIterations} iterations. The others may still be mixed into the ones shown.`,
        );
    }
    warnings.push(...droppedWarning(facts));
    if (facts.Settings.Mask === 'none') {
        warnings.push('No mask was used: every voxel of the grid was analysed, also those outside the head.');
    }
    // The page explains the bands itself, also for results without notes.
    const notes = inputNotes(facts.Input.Notes).filter(({ Code }) => Code !== 'frequency-bands');
    warnings.push(...notes.map(({ Text }) => Text));
    warnings.push(...repetitionTimeWarning(run.trSeconds), ...degenerateWarnings(run));
    if (!run.hasMean) warnings.push('The result holds no mean image; the maps are drawn over the outline of the mask.');
    return warnings;
}

function droppedWarning({ Input: { VoxelsDropped: dropped } }: Decomposition): string[] {
    const notFinite = dropped?.NotFinite ?? 0;
    const constant = dropped?.Constant ?? 0;
    if (notFinite + constant === 0) return [];
    const reasons = [
        notFinite > 0 && `${grouped(notFinite)} not finite in some volume`,
        constant > 0 && `${grouped(constant)} constant over time`,
    ].filter((reason) => reason !== false);
    return [
        `${plural(notFinite + constant, 'voxel')} of the mask ${notFinite + constant === 1 ? 'was' : 'were'} left out: ${reasons.join(', ')}.`,
    ];
}

function repetitionTimeWarning(seconds: number): string[] {
    const { exact, nyquistHz, ranges, wholeSeconds: whole } = bandsFor(seconds);
    if (whole < 1) {
        return [
            `The repetition time of ${seconds} s is below one second, which the plug-in counts as 0: the five power `
                + 'bands are undefined.',
        ];
    }
    const few =
        ranges.length === 5
            ? []
            : [
                  `At a repetition time of ${seconds} s the spectrum ends at ${nyquistHz.toFixed(3)} Hz: `
                      + `${ranges.length} of the five power bands are used, the others mean nothing.`,
              ];
    return exact
        ? few
        : [
              ...few,
              `The plug-in counts the repetition time of ${seconds} s as ${whole} s for the power spectrum: its `
                  + `frequencies, and the limits of the bands, are ${((seconds / whole - 1) * 100).toFixed(0)} % too high.`,
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
        warnings.push(`Some components have no number (n/a) for ${names}: the value behind it could not be rescaled.`);
    }
    const skipped = run.facts.Settings.ClusterSize === null;
    const same = METRICS.filter(
        (metric, m) =>
            FINGERPRINT.includes(metric)
            && !(skipped && metric.column === CLUSTERING)
            && components.every((component) => component.values[m] === components[0].values[m]),
    );
    if (components.length === 1) {
        warnings.push(
            'There is a single component: the parameters that are rescaled across components say nothing about it.',
        );
    } else if (same.length > 0) {
        warnings.push(
            `${same.map((metric) => metric.short).join(', ')}: the same for every component, so of no help to `
                + 'tell them apart.',
        );
    }
    if (skipped) warnings.push('The degree of clustering was skipped; it is 0 for every component.');
    return warnings;
}

/** Notes that are no warnings: what was simply not asked for. */
export function notesOf(run: Run): string[] {
    const notes: string[] = [];
    if (run.facts.Settings.Mask === 'auto') notes.push('The mask was made from the mean image over time.');
    if (!run.facts.Settings.DesignMatrix) notes.push('No design matrix was given, so no predictor can match.');
    if (!run.facts.Settings.Regions) notes.push('No regions were given, so no spatial template can match.');
    if (run.facts.Input.DummyScans) {
        const { DummyScans: dummies } = run.facts.Input;
        notes.push(`${plural(dummies, 'volume')} at the start ${dummies === 1 ? 'was' : 'were'} left out.`);
    }
    return notes;
}
