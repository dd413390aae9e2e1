// Built into a script of its own, which runs when the first brain is drawn in a browser with WebGL2: the start of the
// page does not wait for it.
export { DRAG_MODE, MULTIPLANAR_TYPE, Niivue, NVImage, SHOW_RENDER, SLICE_TYPE } from '@niivue/niivue';
