// Runs in a worker of its own: one order, then the worker is ended, and all its memory with it.
import { type Zippable, zipSync } from 'fflate';
import type { Answer, Order, ResultFile } from './messages';
import { Terminal } from './terminal';
import { startZnica, type Znica } from './znica';

const INPUTS = '/inputs';

function answer(message: Answer, transferred: Transferable[] = []): void {
    postMessage(message, { transfer: transferred });
}

function filesIn(znica: Znica, folder: string, inside = ''): ResultFile[] {
    const { FS } = znica;
    return FS.readdir(folder)
        .filter((name) => name !== '.' && name !== '..')
        .flatMap((name) => {
            const path = `${folder}/${name}`;
            if (FS.isDir(FS.stat(path).mode)) return filesIn(znica, path, `${inside}${name}/`);
            return [{ path: inside + name, bytes: FS.readFile(path) }];
        });
}

// As on a disk after an installation: znica looks for the template of the report beside itself.
function installAt(znica: Znica, template: Uint8Array | null): void {
    znica.FS.mkdir('/bin');
    znica.FS.symlink('/bin/znica', '/proc/self/exe');
    if (template) znica.FS.writeFile('/bin/report-template.html', template);
}

// The files stay on the disk and are read piece by piece.
function mountInputs(znica: Znica, inputs: File[]): void {
    znica.FS.mkdir(INPUTS);
    if (inputs.length > 0) znica.FS.mount(znica.FS.filesystems.WORKERFS, { files: inputs }, INPUTS);
    znica.FS.chdir(INPUTS);
}

async function runZnica(order: Order & { kind: 'znica' }): Promise<void> {
    const terminals = [false, true].map(
        (error) =>
            new Terminal(
                (text) => answer({ kind: 'line', text, error }),
                (text) => answer({ kind: 'progress', text }),
            ),
    );
    const znica = await startZnica(order.module, (fd, text) => terminals[fd - 1].write(text));
    installAt(znica, order.template);
    mountInputs(znica, order.inputs);
    const status = znica.callMain([...order.command, '--out', order.folder]);
    const files = znica.FS.analyzePath(order.folder).exists ? filesIn(znica, order.folder) : [];
    answer(
        { kind: 'done', status, files, heapBytes: znica.HEAP8.length },
        files.map(({ bytes }) => bytes.buffer),
    );
}

// Images and report are compressed already.
function zip(files: ResultFile[]): void {
    const entries: Zippable = {};
    for (const { path, bytes } of files) entries[path] = [bytes, { level: /\.(gz|html)$/.test(path) ? 0 : 6 }];
    const bytes = zipSync(entries);
    answer({ kind: 'done', status: 0, files: [{ path: '', bytes }], heapBytes: 0 }, [bytes.buffer]);
}

addEventListener('message', async ({ data }: MessageEvent<Order>) => {
    try {
        if (data.kind === 'zip') zip(data.files);
        else await runZnica(data);
    } catch (error) {
        answer({ kind: 'failed', text: error instanceof Error ? error.message : String(error) });
    }
});
