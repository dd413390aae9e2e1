// Starts the page: unpacks the inlined parts and runs the app. Separate from the app, because it is the only script
// that is not compressed.
import type { Blocks } from './data/blocks';

function bytesOf(base64: string): Uint8Array<ArrayBuffer> {
    const modern = Uint8Array as unknown as { fromBase64?: (text: string) => Uint8Array<ArrayBuffer> };
    if (modern.fromBase64) return modern.fromBase64(base64);
    const text = atob(base64);
    const bytes = new Uint8Array(text.length);
    for (let i = 0; i < text.length; ++i) bytes[i] = text.charCodeAt(i);
    return bytes;
}

const blocks: Blocks = {
    has: (name) => document.querySelector(`script[data-block="${name}"]`) !== null,
    async bytes(name) {
        const base64 = document.querySelector(`script[data-block="${name}"]`)?.textContent;
        if (!base64) throw new Error(`its part "${name}" is missing; the file is incomplete`);
        const unpacked = new Blob([bytesOf(base64)]).stream().pipeThrough(new DecompressionStream('gzip'));
        return new Uint8Array(await new Response(unpacked).arrayBuffer());
    },
    async text(name) {
        return new TextDecoder().decode(await blocks.bytes(name));
    },
    async run(name) {
        const script = document.createElement('script');
        script.textContent = await blocks.text(name);
        document.head.append(script);
    },
};

async function start(): Promise<void> {
    try {
        if (typeof DecompressionStream === 'undefined') {
            throw new Error('it needs a browser from 2023 or later (Chrome 80, Edge 80, Safari 16.4, Firefox 113)');
        }
        (window as unknown as { znBlocks: Blocks }).znBlocks = blocks;
        await blocks.run('app');
    } catch (error) {
        const message = error instanceof Error ? error.message : String(error);
        document.querySelector('.opening')!.textContent = `The report cannot be shown: ${message}.`;
    }
}

void start();
