/** The compressed parts of this file, by name. Set up by the loader before the app starts. */
export interface Blocks {
    has(name: string): boolean;
    bytes(name: string): Promise<Uint8Array<ArrayBuffer>>;
    text(name: string): Promise<string>;
    /** Runs a block as a script. */
    run(name: string): Promise<void>;
}

export const blocks = (window as unknown as { znBlocks: Blocks }).znBlocks;
