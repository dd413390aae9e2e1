import type { Answer, Order, ResultFile } from './messages';

export interface Outcome {
    status: number;
    files: ResultFile[];
    heapBytes: number;
    /** What the command wrote on standard error. */
    complaint: string;
}

export interface Listener {
    progress?(text: string): void;
    line?(text: string): void;
}

/** Was cancelled; nothing to report. */
export class Cancelled extends Error {}

/** An order being carried out by a worker of its own, which ends with it. */
export class Task {
    readonly outcome: Promise<Outcome>;
    private readonly worker: Worker;
    private stop!: (error: Error) => void;

    constructor(script: Blob, order: Order, listener: Listener = {}) {
        const url = URL.createObjectURL(script);
        this.worker = new Worker(url);
        const complaints: string[] = [];
        this.outcome = new Promise<Outcome>((resolve, reject) => {
            this.stop = reject;
            this.worker.addEventListener('error', (event) => reject(new Error(event.message || 'the worker failed')));
            this.worker.addEventListener('message', ({ data }: MessageEvent<Answer>) => {
                if (data.kind === 'progress') listener.progress?.(data.text);
                else if (data.kind === 'failed') reject(new Error(data.text));
                else if (data.kind === 'done') resolve({ ...data, complaint: complaints.join('\n') });
                else if (data.error) complaints.push(data.text);
                else listener.line?.(data.text);
            });
        }).finally(() => {
            this.worker.terminate();
            URL.revokeObjectURL(url);
        });
        this.outcome.catch(() => {}); // whoever started the task handles it
        this.worker.postMessage(order);
    }

    cancel(): void {
        this.stop(new Cancelled());
    }
}
