/** FNV-1a, 32 bits: enough to keep what the reader chose in different pages apart. */
export function hash(text: string): string {
    let value = 0x811c9dc5;
    for (let i = 0; i < text.length; ++i) value = Math.imul(value ^ text.charCodeAt(i), 0x01000193);
    return (value >>> 0).toString(16);
}
