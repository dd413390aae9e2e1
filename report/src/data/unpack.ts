function bytesOf(base64: string): Uint8Array<ArrayBuffer> {
    const modern = Uint8Array as unknown as { fromBase64?: (text: string) => Uint8Array<ArrayBuffer> };
    if (modern.fromBase64) return modern.fromBase64(base64);
    const text = atob(base64);
    const bytes = new Uint8Array(text.length);
    for (let i = 0; i < text.length; ++i) bytes[i] = text.charCodeAt(i);
    return bytes;
}

/** What was compressed with gzip and written in base64. */
export async function unpacked(base64: string): Promise<Uint8Array<ArrayBuffer>> {
    const stream = new Blob([bytesOf(base64)]).stream().pipeThrough(new DecompressionStream('gzip'));
    return new Uint8Array(await new Response(stream).arrayBuffer());
}
