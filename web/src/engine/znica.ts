// The part of the WebAssembly module's JavaScript that is used here; web/engine builds it.

interface Operations {
    write(stream: Stream, buffer: Int8Array, offset: number, length: number): number;
}

interface Stream {
    node: { rdev: number };
    stream_ops: Operations;
}

interface Files {
    streams: Stream[];
    getDevice(rdev: number): { stream_ops: Operations };
    filesystems: { WORKERFS: object };
    mkdir(path: string): void;
    mkdirTree(path: string): void;
    symlink(target: string, path: string): void;
    mount(type: object, settings: { files: File[] }, path: string): void;
    chdir(path: string): void;
    readdir(path: string): string[];
    stat(path: string): { mode: number };
    isDir(mode: number): boolean;
    readFile(path: string): Uint8Array<ArrayBuffer>;
    writeFile(path: string, bytes: Uint8Array): void;
    analyzePath(path: string): { exists: boolean };
}

export interface Znica {
    FS: Files;
    ENV: Record<string, string>;
    HEAP8: Int8Array;
    callMain(args: string[]): number;
}

interface Settings {
    instantiateWasm(imports: WebAssembly.Imports, done: (instance: WebAssembly.Instance) => void): object;
    preRun: ((znica: Znica) => void)[];
}

declare const createZnica: (settings: Settings) => Promise<Znica>; // in front of the worker's script

// In place of the module's own terminal, which waits for the end of a line. For the streams that are open and for those
// that the program opens to the same device.
function connect(znica: Znica, write: (fd: number, text: string) => void): void {
    for (const fd of [1, 2]) {
        const decoder = new TextDecoder();
        const stream = znica.FS.streams[fd];
        const device = znica.FS.getDevice(stream.node.rdev);
        device.stream_ops = {
            ...device.stream_ops,
            write(_stream, buffer, offset, length) {
                const bytes = new Uint8Array(buffer.buffer, buffer.byteOffset + offset, length);
                write(fd, decoder.decode(bytes, { stream: true }));
                return length;
            },
        };
        stream.stream_ops = device.stream_ops;
    }
}

/** A fresh instance of znica, whose terminal is `write`. */
export async function startZnica(
    module: WebAssembly.Module,
    write: (fd: number, text: string) => void,
): Promise<Znica> {
    const znica = await createZnica({
        instantiateWasm(imports, done) {
            void WebAssembly.instantiate(module, imports).then(done);
            return {};
        },
        preRun: [
            ({ ENV }) => {
                ENV.TERM = 'xterm'; // so that it reports its progress as it does on a terminal
            },
        ],
    });
    connect(znica, write);
    return znica;
}
