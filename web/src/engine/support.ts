// Whether this browser can run the engine, asked with the smallest modules that need what it needs.
const HEADER = [0, 97, 115, 109, 1, 0, 0, 0];
const VECTORS = [1, 5, 1, 96, 0, 1, 123, 3, 2, 1, 0, 10, 10, 1, 8, 0, 65, 0, 253, 15, 253, 98, 11]; // i8x16.splat
const EXCEPTIONS = [1, 4, 1, 96, 0, 0, 3, 2, 1, 0, 10, 8, 1, 6, 0, 6, 64, 25, 11, 11]; // try, catch_all

function understands(section: number[]): boolean {
    return WebAssembly.validate(new Uint8Array([...HEADER, ...section]));
}

/** One sentence on what is missing, or null. */
export function missingSupport(): string | null {
    const advice = 'use Chrome, Edge or Firefox, or Safari 16.4 or later, each up to date';
    if (typeof WebAssembly === 'undefined') {
        return `This browser has no WebAssembly, or it is switched off; ${advice}.`;
    }
    if (!understands(VECTORS)) return `This browser has no vectors in WebAssembly (SIMD); ${advice}.`;
    if (!understands(EXCEPTIONS)) return `This browser has no exceptions in WebAssembly; ${advice}.`;
    if (typeof DecompressionStream === 'undefined') return `This browser cannot unpack gzip; ${advice}.`;
    return null;
}
