import type { Engine } from '../engine/engine';
import type { Task } from '../engine/task';

const WANTED = /_(bold\.nii\.gz|bold\.json|desc-brain_mask\.nii\.gz|desc-task_design\.tsv)$/;

/** Simulates a small measurement with known sources. */
export function simulate(engine: Engine): Task {
    return engine.start(['simulate'], [], '/sample');
}

/** Of its files, those that a run needs. */
export function sampleInputs(files: { path: string; bytes: Uint8Array<ArrayBuffer> }[]): File[] {
    return files.filter(({ path }) => WANTED.test(path)).map(({ path, bytes }) => new File([bytes], path));
}
