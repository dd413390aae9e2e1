// Built into a separate script that runs when the first brain is drawn in a browser with WebGL2, so that the page does
// not wait for it when it opens.
export { DRAG_MODE, MULTIPLANAR_TYPE, Niivue, NVImage, SHOW_RENDER, SLICE_TYPE } from '@niivue/niivue';
