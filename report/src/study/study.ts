/** A measure of the runs. */
export interface Column {
    title: string;
    units: string;
    description: string;
    kind: Kind;
}

/** What a measure belongs to. A column of denoising is there only if some run has a value. */
export type Kind = 'analysis' | 'denoising';

export type Status = 'done' | 'fewer components' | 'no result' | 'no record';

/** The worst first. */
export const STATUSES: Status[] = ['no result', 'no record', 'fewer components', 'done'];

/** What became of the denoising of a run. */
export interface Denoised {
    failed: boolean;
    message: string;
    method: string;
    notes: string[];
    report: boolean; // NAME_denoised.html is there
}

export interface StudyRun {
    name: string;
    status: Status;
    exitStatus: number | null;
    message: string;
    notes: string[];
    values: (number | null)[]; // one per column
    outlying: number[]; // columns in which the run lies apart from the others
    report: boolean; // NAME.html is there
    denoised: Denoised | null; // null: it was not denoised
    thumbnail: string; // pixels of the mean image, see thumbnail.ts; empty: none
}

/** The data of the page. */
export interface Study {
    name: string;
    version: string;
    group: string | null; // the page of a group analysis, relative to this one; null: none
    columns: Column[];
    runs: StudyRun[];
}
