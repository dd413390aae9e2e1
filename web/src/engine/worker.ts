// Runs in a worker of its own: one order, then the worker is ended, and all its memory with it.
import { type Zippable, zipSync } from 'fflate';
import { partsOf } from '../result/report_parts';
import type { Answer, Contents, Order, ResultFile } from './messages';
import { Terminal } from './terminal';
import { startZnica, type Znica } from './znica';

// Only in workers, which the types of a page lack.
declare const FileReaderSync: new () => { readAsArrayBuffer(blob: Blob): ArrayBuffer };

const INPUTS = '/inputs';

function answer(message: Answer, transferred: Transferable[] = []): void {
    postMessage(message, { transfer: transferred });
}

// The files of a folder, which are removed from it one by one, so that no two copies of all of them exist.
function takeFiles(znica: Znica, folder: string, inside = ''): ResultFile[] {
    const { FS } = znica;
    return FS.readdir(folder)
        .filter((name) => name !== '.' && name !== '..')
        .flatMap((name) => {
            const path = `${folder}/${name}`;
            if (FS.isDir(FS.stat(path).mode)) return takeFiles(znica, path, `${inside}${name}/`);
            const file = { path: inside + name, bytes: FS.readFile(path) };
            FS.unlink(path);
            return [file];
        });
}

// As on a disk after an installation: znica looks for the template of the report beside itself.
function installAt(znica: Znica, template: Uint8Array | null): void {
    znica.FS.mkdir('/bin');
    znica.FS.symlink('/bin/znica', '/proc/self/exe');
    if (template) znica.FS.writeFile('/bin/report-template.html', template);
}

function canRead(inputs: File[]): boolean {
    try {
        for (const file of inputs) new FileReaderSync().readAsArrayBuffer(file.slice(0, 1));
        return true;
    } catch {
        return false;
    }
}

function contentsFromPage(): Promise<Contents> {
    return new Promise((resolve) => {
        addEventListener('message', ({ data }: MessageEvent<Contents>) => resolve(data), { once: true });
        answer({ kind: 'unreadable' });
    });
}

// The files stay on the disk and are read piece by piece. A worker of a page from disk may not do that in WebKit; then
// the page reads them as a whole.
async function mountInputs(znica: Znica, inputs: File[]): Promise<void> {
    znica.FS.mkdir(INPUTS);
    if (!canRead(inputs)) {
        const contents = await contentsFromPage();
        inputs.forEach(({ name }, i) => {
            znica.FS.writeFile(`${INPUTS}/${name}`, new Uint8Array(contents[i]), { canOwn: true });
        });
    } else if (inputs.length > 0) {
        znica.FS.mount(znica.FS.filesystems.WORKERFS, { files: inputs }, INPUTS);
    }
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
    await mountInputs(znica, order.inputs);
    const status = znica.callMain([...order.command, '--out', order.folder]);
    const files = znica.FS.analyzePath(order.folder).exists ? takeFiles(znica, order.folder) : [];
    const page = files.find(({ path }) => path === 'report.html');
    const report = page ? partsOf(page.bytes) : null;
    answer(
        { kind: 'done', status, files, report, heapBytes: znica.HEAP8.length },
        files.map(({ bytes }) => bytes.buffer),
    );
}

// Images and report are compressed already.
function zip(files: ResultFile[]): void {
    const entries: Zippable = {};
    for (const { path, bytes } of files) entries[path] = [bytes, { level: /\.(gz|html)$/.test(path) ? 0 : 6 }];
    const bytes = zipSync(entries);
    answer({ kind: 'done', status: 0, files: [{ path: '', bytes }], report: null, heapBytes: 0 }, [bytes.buffer]);
}

addEventListener(
    'message',
    async ({ data }: MessageEvent<Order>) => {
        try {
            if (data.kind === 'zip') zip(data.files);
            else await runZnica(data);
        } catch (error) {
            answer({ kind: 'failed', text: error instanceof Error ? error.message : String(error) });
        }
    },
    { once: true },
);
