/** Lightest grey of the mean image, as a fraction of white; the strong ends of the colours are lighter. */
export const LIGHTEST_GREY = 0.65;

/** Width in pixels from which the three planes are drawn side by side; below it, two by two. */
export const ROW_WIDTH = 620;

/** How maps are drawn; set by the reader and shared by all components. */
export interface Look {
    threshold: number; // on the magnitude of z; voxels below it show only the mean image
    fewest: number; // voxels of a cluster; smaller ones show only the mean image
    ceiling: number | null; // upper end of the colours; null: from the map
    opacity: number; // 0 to 1
    colourMap: string; // id
    smooth: boolean; // interpolate between voxels
    radiological: boolean; // left side of the body on the right of the image
    render: boolean; // add a 3D rendering, where the browser has WebGL2
    crosshair: boolean; // draw the crosshair
}

export function defaultLook(threshold: number): Look {
    return {
        threshold,
        fewest: 10,
        ceiling: null,
        opacity: 0.9,
        colourMap: 'orange-blue',
        smooth: true,
        radiological: false,
        render: false,
        crosshair: true,
    };
}

/** Upper end of the colours, in z, for a map whose large values reach `high`. */
export function ceilingOf(look: Look, high: number): number {
    return Math.max(look.ceiling ?? Math.ceil(2 * high) / 2, look.threshold + 0.1);
}
