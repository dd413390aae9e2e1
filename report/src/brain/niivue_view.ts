import type { Niivue as NiivueType, NVImage as NVImageType } from '@niivue/niivue';
import type { Vector } from '../data/affine';
import { toMm, toVoxel } from '../data/affine';
import { blocks } from '../data/blocks';
import type { Brain } from '../data/brain';
import { type ComponentMap, NO_VALUE } from '../data/component_map';
import type { Grid } from '../data/grid';
import { h } from '../dom';
import type { BrainView } from './brain_view';
import { COLOUR_MAPS, type Lut } from './colour_maps';
import { croppedGrid, croppedSize } from './extent';
import { ceilingOf, LIGHTEST_GREY, type Look, ROW_WIDTH } from './look';
import { niftiBuffer } from './nifti_buffer';
import type { PlaneName } from './plane';

type NiivueModule = typeof import('../niivue_bundle');
let library: Promise<NiivueModule> | null = null;

function loadLibrary(): Promise<NiivueModule> {
    library ??= blocks.run('niivue').then(() => (window as unknown as { znNiivue: NiivueModule }).znNiivue);
    return library;
}

// The first step is transparent, because values below the threshold map to it; its grey keeps the colour of the other
// sign out of smoothed edges.
function niivueColours(lut: Lut): { R: number[]; G: number[]; B: number[]; A: number[]; I: number[] } {
    const steps = Array.from({ length: 256 }, (_, i) => i);
    return {
        R: steps.map((i) => (i === 0 ? 110 : lut[3 * i])),
        G: steps.map((i) => (i === 0 ? 110 : lut[3 * i + 1])),
        B: steps.map((i) => (i === 0 ? 110 : lut[3 * i + 2])),
        A: steps.map((i) => (i === 0 ? 0 : 255)),
        I: steps,
    };
}

type OpenImage = (
    data: ArrayBuffer,
    name: string,
    colours: string,
    opacity: number,
    paired: null,
    low: number,
    high: number,
) => Promise<NVImageType>;
interface Location {
    mm: ArrayLike<number>;
    axCorSag: number; // slice type of the plane that was used
}

const RENDER_SHARE = 0.6; // of the height, for the 3D view above the planes
const PLANE_OF_SLICE_TYPE: (PlaneName | undefined)[] = ['axial', 'coronal', 'sagittal'];

// The crosshair follows the left button. The library's actions for other buttons and keys would change the contrast of
// the mean image, move the brain out of view or open a dialog, and nothing on this page could undo that.
function disableGestures(nv: NiivueType): void {
    const press = nv.mouseDownListener.bind(nv);
    nv.mouseDownListener = (event) => {
        if (event.button === 0 && !event.shiftKey) press(event);
    };
    nv.keyDownListener = nv.keyUpListener = () => {};
    nv.resetBriCon = () => {}; // on double-click
}

/** The planes, and on request a 3D rendering, drawn by NiiVue with WebGL2. */
export class NiivueView implements BrainView {
    readonly element = h('div', { class: 'planes planes-webgl', 'data-renderer': 'webgl2' });
    onPick: BrainView['onPick'] = () => {};

    private readonly canvas = h('canvas', { class: 'plane-all', role: 'img', 'aria-label': 'three planes' });
    private readonly dense: Int16Array; // the map on the cropped grid
    private readonly cropped: Grid;
    private readonly whole: Int32Array; // index in the cropped grid -> index in the whole one
    private nv!: NiivueType;
    private library!: NiivueModule;
    private render = false;
    private crosshair = true;
    private colours = '';
    private overlay!: NVImageType;
    private map: ComponentMap | null = null;
    private own = false; // the crosshair is being moved by the page, not by the reader

    private constructor(private readonly brain: Brain) {
        ({ grid: this.cropped, whole: this.whole } = croppedGrid(brain));
        this.dense = new Int16Array(this.cropped.count);
        this.element.append(this.canvas);
    }

    /** Makes a view that stays hidden in `place` until `reveal`. Rejects if the browser cannot draw after all. */
    static async make(brain: Brain, place: HTMLElement): Promise<NiivueView> {
        const view = new NiivueView(brain);
        view.element.classList.add('planes-waiting');
        place.append(view.element);
        try {
            await view.start();
        } catch (error) {
            view.element.remove();
            throw error;
        }
        return view;
    }

    reveal(): void {
        this.element.classList.remove('planes-waiting');
    }

    show(map: ComponentMap, look: Look, voxel: Vector): void {
        if (map !== this.map) this.fill(map);
        this.map = map;
        const { overlay, nv } = this;
        overlay.colormap = `${look.colourMap}+`;
        overlay.colormapNegative = `${look.colourMap}-`;
        overlay.cal_min = look.threshold;
        overlay.cal_max = ceilingOf(look, map.high);
        overlay.cal_minNeg = -overlay.cal_max;
        overlay.cal_maxNeg = -overlay.cal_min;
        overlay.opacity = look.opacity;
        if (nv.opts.isNearestInterpolation === look.smooth) nv.setInterpolation(!look.smooth); // for the mean image too
        nv.opts.isRadiologicalConvention = look.radiological;
        nv.opts.multiplanarShowRender = look.render ? this.library.SHOW_RENDER.ALWAYS : this.library.SHOW_RENDER.NEVER;
        this.render = look.render;
        this.crosshair = look.crosshair;
        this.arrange();
        nv.scene.pan2Dxyzmm = [0, 0, 0, 1]; // a two-finger gesture may have moved it
        nv.scene.crosshairPos = this.fractionOf(voxel);
        if (look.colourMap !== this.colours) nv.refreshColormaps();
        this.colours = look.colourMap;
        nv.refreshLayers(overlay, 1); // the mean image stays on the graphics card as it is
        nv.drawScene();
    }

    setCrosshair(voxel: Vector): void {
        this.nv.scene.crosshairPos = this.fractionOf(voxel);
        this.own = true;
        this.nv.drawScene();
        this.own = false;
    }

    dispose(): void {
        this.element.remove();
        this.nv.gl?.getExtension('WEBGL_lose_context')?.loseContext(); // browsers allow only a few contexts
    }

    private async start(): Promise<void> {
        this.library = await loadLibrary();
        const { DRAG_MODE, MULTIPLANAR_TYPE, Niivue, NVImage, SHOW_RENDER } = this.library;
        this.nv = new Niivue({
            logLevel: 'silent',
            dragAndDropEnabled: false,
            multiplanarLayout: MULTIPLANAR_TYPE.ROW,
            multiplanarShowRender: SHOW_RENDER.NEVER,
            multiplanarPadPixels: 6,
            crosshairColor: [0.43, 0.92, 0.59, 0.85],
            crosshairGap: 5,
            crosshairWidthUnit: 'mm',
            fontColor: [0.84, 0.86, 0.89, 1],
            backColor: [0, 0, 0, 1],
            show3Dcrosshair: true,
            isColorbar: false,
            isOrientationTextVisible: this.brain.grid.oriented,
            showAllOrientationMarkers: true,
            viewModeHotKey: '',
            clipPlaneHotKey: '',
            cycleClipPlaneHotKey: '',
            dragMode: DRAG_MODE.none,
            touchEventConfig: { singleTouch: DRAG_MODE.crosshair, doubleTouch: DRAG_MODE.none },
        });
        disableGestures(this.nv);
        for (const map of COLOUR_MAPS) {
            this.nv.addColormap(`${map.id}+`, niivueColours(map.positive));
            this.nv.addColormap(`${map.id}-`, niivueColours(map.negative));
        }
        const resize = this.nv.resizeListener.bind(this.nv);
        this.nv.resizeListener = () => {
            if (this.canvas.offsetWidth === 0) return; // the view is not in the page
            this.arrange();
            resize();
        };
        this.arrange();
        await this.nv.attachToCanvas(this.canvas);
        const grid = this.cropped;
        const grey = Uint8Array.from(this.whole, (index) => this.brain.grey[index]);
        const open = NVImage.new as unknown as OpenImage; // the remaining parameters have defaults
        const mean = await open(niftiBuffer(grid, grey, 1), 'mean.nii', 'gray', 1, null, 0, 255 / LIGHTEST_GREY);
        this.overlay = await open(niftiBuffer(grid, this.dense, 1), 'map.nii', `${COLOUR_MAPS[0].id}+`, 1, null, 1, 2);
        this.nv.addVolume(mean);
        this.nv.addVolume(this.overlay);
        this.nv.onLocationChange = (location) => this.picked(location as Location);
    }

    private picked(location: Location): void {
        if (this.own || !this.map) return;
        const { mm, axCorSag } = location;
        // NiiVue numbers its voxels along the anatomical axes, not in file order.
        this.onPick(toVoxel(this.brain.grid.affine, [mm[0], mm[1], mm[2]]), PLANE_OF_SLICE_TYPE[axCorSag] ?? null);
    }

    // Side by side where there is room, otherwise two by two, with crosshair lines about a pixel wide.
    private arrange(): void {
        const [x, y, z] = croppedSize(this.brain);
        const { GRID, ROW } = this.library.MULTIPLANAR_TYPE;
        const row = this.element.clientWidth >= ROW_WIDTH;
        const width = row ? 2 * x + y : x + y;
        const height = row ? Math.max(y, z) : y + z;
        this.nv.opts.multiplanarLayout = row ? ROW : GRID;
        this.nv.opts.heroImageFraction = this.render ? RENDER_SHARE : 0;
        this.element.style.aspectRatio = String((width / height) * (this.render ? 1 - RENDER_SHARE : 1));
        const pixel = this.crosshair ? (1.05 * width) / Math.max(1, this.element.clientWidth) : 0;
        if (Math.abs(this.nv.opts.crosshairWidth - pixel) > 0.05) this.nv.crosshairs3D = null; // made again when drawn
        this.nv.opts.crosshairWidth = pixel;
    }

    // Uses the full affine, so that it holds for oblique grids too.
    private fractionOf(voxel: Vector): ReturnType<NiivueType['mm2frac']> {
        return this.nv.mm2frac(toMm(this.brain.grid.affine, voxel), 0, true);
    }

    private fill(map: ComponentMap): void {
        for (let i = 0; i < this.dense.length; ++i) {
            const inside = this.brain.insideOf[this.whole[i]];
            const value = inside < 0 ? NO_VALUE : map.values[inside];
            this.dense[i] = value === NO_VALUE ? 0 : value;
        }
        this.overlay.img = this.dense;
        this.overlay.hdr!.scl_slope = map.scale;
        this.overlay.hdr!.scl_inter = 0;
    }
}
