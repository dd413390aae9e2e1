/** A file of a result, by its path inside the folder. */
export interface ResultFile {
    path: string;
    bytes: Uint8Array<ArrayBuffer>;
}

/** What a worker is asked to do; it does one thing and ends. */
export type Order =
    | { kind: 'zip'; files: ResultFile[] }
    | {
          kind: 'znica';
          module: WebAssembly.Module;
          /** Arguments of the command. Its inputs are in the current folder. */
          command: string[];
          inputs: File[];
          /** The template of the report, if there is to be one. */
          template: Uint8Array<ArrayBuffer> | null;
          /** The folder that the command creates; the answer has its files. */
          folder: string;
      };

/** What a worker answers, the last message being `done` or `failed`. */
export type Answer =
    | { kind: 'progress'; text: string } // a state, which replaces the one before
    | { kind: 'line'; text: string; error: boolean } // of standard output or standard error
    | { kind: 'done'; status: number; files: ResultFile[]; heapBytes: number }
    | { kind: 'failed'; text: string };
