// Chart.js draws both line and radar charts, is small when only the parts in use are bundled, and redraws in a few
// milliseconds without animation. Its canvases get their text alternatives here.
import {
    CategoryScale,
    Chart,
    type ChartConfiguration,
    Filler,
    Legend,
    LinearScale,
    LineController,
    LineElement,
    LogarithmicScale,
    PointElement,
    RadarController,
    RadialLinearScale,
    Tooltip,
} from 'chart.js';
import { h } from '../dom';
import { colour, onThemeChange } from '../theme';
import { type Area, BAND_AREAS, setAreas } from './band_areas';

Chart.register(
    BAND_AREAS,
    CategoryScale,
    Filler,
    Legend,
    LinearScale,
    LineController,
    LineElement,
    LogarithmicScale,
    PointElement,
    RadarController,
    RadialLinearScale,
    Tooltip,
);
Chart.defaults.animation = false;
Chart.defaults.maintainAspectRatio = false;
Chart.defaults.font.family = 'system-ui, -apple-system, "Segoe UI", Roboto, sans-serif';
Chart.defaults.font.size = 12;

const PAPER_RATIO = 3; // device pixels per CSS pixel: 288 per inch

/** A canvas that keeps a reference to its chart, for tests. */
export type ChartCanvas = HTMLCanvasElement & { chart?: Chart };

/** A chart in its own box, redrawn when its data or the theme change. */
export class ChartBox {
    readonly element: HTMLElement;
    private readonly canvas: ChartCanvas;
    private configuration: (() => ChartConfiguration) | null = null;

    /** `paper`: width and height in print, in CSS pixels; the style sheet scales down what does not fit its panel. */
    constructor(
        name: string,
        private readonly paper: [number, number],
    ) {
        this.canvas = h('canvas', { role: 'img' });
        this.element = h('div', { class: `chart chart-${name}` }, this.canvas);
        onThemeChange(() => this.draw());
        addEventListener('beforeprint', () => this.resize(PAPER_RATIO, this.paper));
        addEventListener('afterprint', () => this.resize(undefined, []));
    }

    /** `text`: what the chart shows, for readers who cannot see it; `areas`: shaded ranges of the horizontal axis. */
    show(text: string, configuration: () => ChartConfiguration, areas: Area[] = []): void {
        setAreas(this.canvas, areas);
        this.canvas.setAttribute('aria-label', text);
        this.configuration = configuration;
        this.draw();
    }

    // The size is given because the page is not yet laid out for paper when `beforeprint` fires.
    private resize(ratio: number | undefined, size: [number, number] | []): void {
        const { chart } = this.canvas;
        if (!chart) return;
        chart.options.devicePixelRatio = ratio;
        chart.resize(...size);
    }

    private draw(): void {
        if (!this.configuration) return;
        const next = this.configuration();
        const { chart } = this.canvas;
        if (chart) {
            chart.data = next.data;
            chart.options = next.options ?? {};
            chart.update('none');
        } else {
            this.canvas.chart = new Chart(this.canvas, next);
        }
    }
}

/** Options of an axis with a title. */
export function axis(title: string, step?: number): object {
    return {
        title: { display: true, text: title, color: colour('muted') },
        ticks: { color: colour('muted'), maxRotation: 0, ...(step ? { stepSize: step } : {}) },
        grid: { color: colour('line') },
        border: { color: colour('line') },
    };
}

/** Options of an axis that ends where the data end: ticks at round numbers only, even at its ends. */
export function wholeAxis(title: string): object {
    return { ...axis(title), ticks: { color: colour('muted'), maxRotation: 0, includeBounds: false } };
}

/** Options of a legend; `visible` when there is more than one curve. */
export function legend(visible: boolean): object {
    return {
        display: visible,
        align: 'end',
        labels: { color: colour('text'), boxWidth: 18, boxHeight: 2, usePointStyle: false },
    };
}
