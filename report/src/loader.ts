// Starts the page: unpacks the inlined parts and runs the app. Separate from the app, because it is the only script
// that is not compressed.
import type { Blocks } from './data/blocks';
import { unpacked } from './data/unpack';

const blocks: Blocks = {
    has: (name) => document.querySelector(`script[data-block="${name}"]`) !== null,
    async bytes(name) {
        const base64 = document.querySelector(`script[data-block="${name}"]`)?.textContent;
        if (!base64) throw new Error(`its part "${name}" is missing; the file is incomplete`);
        return unpacked(base64);
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
