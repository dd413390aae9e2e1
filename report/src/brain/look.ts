/** The lightest grey of the mean image, as a share of white: the strong ends of the colours are lighter. */
export const LIGHTEST_GREY = 0.65;

/** How maps are drawn: set by the reader, the same for every component. */
export interface Look {
    threshold: number; // on the magnitude of z; voxels below it show the mean image alone
    ceiling: number | null; // where the colours end; null: from the map
    opacity: number; // 0 to 1
    colourMap: string; // id
    smooth: boolean; // between voxels
    radiological: boolean; // the left of the body at the right of the image
    render: boolean; // with the volume seen from outside, where the browser has WebGL2
}

export function defaultLook(threshold: number): Look {
    return {
        threshold,
        ceiling: null,
        opacity: 0.9,
        colourMap: 'orange-blue',
        smooth: true,
        radiological: false,
        render: false,
    };
}

/** Where the colours end for a map whose large values reach `high`. */
export function ceilingOf(look: Look, high: number): number {
    return Math.max(look.ceiling ?? Math.ceil(2 * high) / 2, look.threshold + 0.1);
}
