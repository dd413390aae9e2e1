// NIfTI-1 files, read and written without the code under test: 348-byte header, sform, one number type at a time.
import { readFileSync, writeFileSync } from 'node:fs';
import { gunzipSync, gzipSync } from 'node:zlib';

const UINT8 = 2;
const FLOAT32 = 16;

/** { size, volumes, affine, at(voxel, volume) } of a float32 or uint8 file. */
export function readNifti(file) {
    const bytes = gunzipSync(readFileSync(file));
    const size = [42, 44, 46].map((at) => bytes.readInt16LE(at));
    const volumes = bytes.readInt16LE(40) > 3 ? bytes.readInt16LE(48) : 1;
    const type = bytes.readInt16LE(70);
    const start = bytes.readFloatLE(108);
    const affine = [0, 1, 2].map((row) => [0, 1, 2, 3].map((column) => bytes.readFloatLE(280 + 16 * row + 4 * column)));
    const index = ([x, y, z], volume) => x + size[0] * (y + size[1] * (z + size[2] * volume));
    const at = (voxel, volume = 0) =>
        type === FLOAT32
            ? bytes.readFloatLE(start + 4 * index(voxel, volume))
            : bytes.readUInt8(start + index(voxel, volume));
    return { size, volumes, affine, at };
}

/** `data`: Float32Array or Uint8Array, x fastest, then y, z, volume. Without `oriented`, the affine is not written. */
export function writeNifti(file, size, volumes, affine, data, oriented = true) {
    const header = Buffer.alloc(352);
    const float = data instanceof Float32Array;
    header.writeInt32LE(348, 0);
    [volumes > 1 ? 4 : 3, ...size, volumes, 1, 1, 1].forEach((value, i) => header.writeInt16LE(value, 40 + 2 * i));
    header.writeInt16LE(float ? FLOAT32 : UINT8, 70);
    header.writeInt16LE(float ? 32 : 8, 72);
    const edges = [0, 1, 2].map((column) => Math.hypot(...affine.map((row) => row[column])));
    [1, ...edges, 1, 1, 1, 1].forEach((value, i) => header.writeFloatLE(value, 76 + 4 * i));
    header.writeFloatLE(352, 108);
    header.writeFloatLE(1, 112);
    header.writeUInt8(2 + 8, 123); // millimetres, seconds
    if (oriented) {
        header.writeInt16LE(1, 254); // sform: scanner
        affine.flat().forEach((value, i) => header.writeFloatLE(value, 280 + 4 * i));
    }
    header.write('n+1\0', 344, 'latin1');
    const values = Buffer.from(data.buffer, data.byteOffset, data.byteLength);
    writeFileSync(file, gzipSync(Buffer.concat([header, values]), { level: 1 }));
}
