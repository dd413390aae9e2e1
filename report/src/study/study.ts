/** A measure of the runs. */
export interface Column {
    title: string;
    units: string;
    description: string;
}

export type Status = 'done' | 'fewer components' | 'no result' | 'no record';

/** The worst first. */
export const STATUSES: Status[] = ['no result', 'no record', 'fewer components', 'done'];

export interface StudyRun {
    name: string;
    status: Status;
    exitStatus: number | null;
    message: string;
    notes: string[];
    values: (number | null)[]; // one per column
    outlying: number[]; // columns in which the run lies apart from the others
    report: boolean; // NAME.html is there
    thumbnail: string; // pixels of the mean image, see thumbnail.ts; empty: none
}

/** The data of the page. */
export interface Study {
    name: string;
    version: string;
    columns: Column[];
    runs: StudyRun[];
}
