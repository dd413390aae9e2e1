import { unpacked } from '../../../report/src/data/unpack';
import type { ResultFile } from './messages';
import { type Listener, type Outcome, Task } from './task';

function part(name: string): Promise<Uint8Array<ArrayBuffer>> {
    const element = document.querySelector(`script[data-block="${name}"]`);
    if (!element?.textContent) throw new Error(`its part "${name}" is missing; the file is incomplete`);
    return unpacked(element.textContent);
}

/** znica as it is packed into this page, compiled once. */
export class Engine {
    private constructor(
        private readonly module: WebAssembly.Module,
        private readonly script: Blob,
        private readonly template: Uint8Array<ArrayBuffer>,
    ) {}

    static async unpack(): Promise<Engine> {
        const [wasm, worker, template] = await Promise.all([part('wasm'), part('worker'), part('template')]);
        const module = await WebAssembly.compile(wasm);
        return new Engine(module, new Blob([worker], { type: 'text/javascript' }), template);
    }

    /** Starts a command; `report`: it is a run, which makes a report. */
    start(command: string[], inputs: File[], folder: string, listener: Listener = {}, report = false): Task {
        const template = report ? this.template : null;
        const order = { kind: 'znica', module: this.module, command, inputs, template, folder } as const;
        return new Task(this.script, order, listener);
    }

    zip(files: ResultFile[]): Promise<Outcome> {
        return new Task(this.script, { kind: 'zip', files }).outcome;
    }
}
