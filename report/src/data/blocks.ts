/** The compressed parts of this file, by name. Set up by the loader before the app starts. */
export interface Blocks {
    has(name: string): boolean;
    bytes(name: string): Promise<Uint8Array<ArrayBuffer>>;
    text(name: string): Promise<string>;
    /** Runs a block as a script. */
    run(name: string): Promise<void>;
}

/** The element of a frame that shows a report whose parts are not in the file, but kept by the page around it. */
export interface Keeper extends Element {
    packedPart(name: string): string | null;
}

export const blocks = (window as unknown as { znBlocks: Blocks }).znBlocks;
