import type { Brain } from './brain';

/** Numbers the voxels of a mask, of which `inside` are in it. */
export function indexMask(mask: Uint8Array, inside: number): Pick<Brain, 'insideOf' | 'gridOf'> {
    const insideOf = new Int32Array(mask.length).fill(-1);
    const gridOf = new Int32Array(inside);
    let next = 0;
    for (let i = 0; i < mask.length; ++i) {
        if (!mask[i]) continue;
        gridOf[next] = i;
        insideOf[i] = next++;
    }
    return { insideOf, gridOf };
}
