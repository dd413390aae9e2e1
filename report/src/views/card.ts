import { cardAspect, type DrawnSlice, drawCard } from '../brain/card_picture';
import type { Look } from '../brain/look';
import { fingerprintOf } from '../charts/fingerprint_chart';
import { drawFingerprintGlyph } from '../charts/fingerprint_glyph';
import { drawSparkline } from '../charts/sparkline';
import { spectrumOf } from '../charts/spectrum_chart';
import { drawSpectrumGlyph } from '../charts/spectrum_glyph';
import { scaledPredictor } from '../charts/time_course_chart';
import { clearConfound } from '../data/measures';
import { METRICS } from '../data/metrics';
import { isInverted, isWeak, type PredictorMatch, predictorMatch } from '../data/predictor_match';
import type { Component, Run } from '../data/run';
import { shownCourse, shownMap } from '../data/shown_component';
import { append, h } from '../dom';
import { LABELS, type Labels } from '../labels/labels';
import { fixed, plural, short, stabilityText } from '../numbers';
import type { SortKey } from './order';

/** "three planes through the largest cluster and 5 axial slices" */
function slicesText(slices: DrawnSlice[], oriented: boolean): string {
    const planes = slices.some(({ plane }) => plane !== 'axial');
    const word = oriented ? 'axial slice' : 'slice';
    return planes
        ? `three planes through the largest cluster and ${plural(slices.length - 3, word)}`
        : plural(slices.length, word);
}

function confoundText({ measures }: Component): HTMLElement | null {
    const confound = clearConfound(measures);
    return (
        confound
        && h(
            'span',
            { class: 'card-confound', title: 'Most similar confound' },
            `${confound.name} |r| ${confound.strength.toFixed(2)}`,
        )
    );
}

function predictorText(match: PredictorMatch): string {
    return `${match.predictor.name} r ${fixed(match.r, 2)}${isInverted(match) ? ' (inverted)' : ''}`;
}

/** One component in the gallery. Its images are drawn when it comes into view. */
export class Card {
    readonly element: HTMLElement;
    drawn = false;
    drawing: Promise<void> = Promise.resolve(); // of the images, last
    private readonly mosaic = h('canvas', { class: 'card-mosaic', role: 'img' });
    private readonly course = h('canvas', { class: 'card-course', role: 'img' });
    private readonly spectrum = h('canvas', { class: 'card-spectrum', role: 'img' });
    private readonly glyph = h('canvas', { class: 'card-glyph', role: 'img' });
    private readonly predictor = h('span', { class: 'card-predictor', title: 'Best-matching predictor' });
    private readonly name = h('span', { class: 'card-name' });
    private readonly label = h('span', { class: 'card-label' });
    private readonly note = h('p', { class: 'card-note' });
    private readonly value = h('span', { class: 'card-value' });

    constructor(
        private readonly run: Run,
        readonly component: Component,
        private readonly labels: Labels,
    ) {
        const { name, title } = component;
        this.mosaic.setAttribute('aria-label', `Map of ${title}`);
        this.mosaic.style.aspectRatio = String(cardAspect(run));
        this.course.setAttribute('aria-label', `Time course of ${title}`);
        this.spectrum.setAttribute('aria-label', `Power spectrum of ${title}`);
        this.glyph.setAttribute('aria-label', `Fingerprint of ${title}`);
        this.element = h(
            'article',
            { class: 'card', 'data-component': name },
            h(
                'header',
                { class: 'card-head' },
                h('h3', {}, h('a', { href: `#/component/${name}`, class: 'card-link' }, title)),
                this.name,
                this.label,
            ),
            this.mosaic,
            h('div', { class: 'card-charts' }, this.course, this.spectrum, this.glyph),
            h('footer', { class: 'card-foot' }, this.value, confoundText(component), this.predictor),
            this.note,
        );
        this.refreshLabel();
        this.refreshSign();
    }

    /** Shows the sign of what depends on it, apart from the images. */
    refreshSign(): void {
        const match = this.match();
        this.name.textContent = `${this.component.name}${this.run.signs.isFlipped(this.component) ? ' \u00b7 flipped' : ''}`;
        this.predictor.textContent = match ? predictorText(match) : '';
        this.predictor.hidden = match === null;
    }

    /** Shows the current label and note. */
    refreshLabel(): void {
        const { label, note } = this.labels.get(this.component.name);
        const known = LABELS.find((entry) => entry.label === label);
        this.label.className = known ? `card-label chip chip-${known.label}` : 'card-label';
        this.label.textContent = known ? `${known.sign} ${known.title}` : '';
        this.note.textContent = note;
        this.note.hidden = note === '';
    }

    /** Shows explained variance and stability, where the result has them, and the parameter that the gallery is sorted by. */
    showValue(sort: SortKey): void {
        const { cells, facts, measures, values } = this.component;
        const partner = this.run.compared?.partners.get(this.component);
        const fact = (text: string, title: string): HTMLElement => h('span', { title }, text);
        this.value.replaceChildren();
        append(this.value, [
            typeof sort === 'number' && fact(`${METRICS[sort].short} ${short(values[sort])}`, cells[sort]),
            partner
                && fact(
                    `${partner.component.title}, r ${fixed(partner.r * this.run.signs.of(this.component) * this.run.signs.of(partner.component), 2)}`,
                    'Spatial correlation with the matching component',
                ),
            !Number.isNaN(measures.explainedPercent)
                && fact(`${measures.explainedPercent.toFixed(1)} % of variance`, 'Explained variance over time'),
            facts?.StabilityIndex !== undefined
                && fact(
                    `stability ${stabilityText(facts.StabilityIndex ?? NaN)}`,
                    'Stability index Iq over the repeats',
                ),
        ]);
    }

    /** Whether the card is in the page and has a size; images drawn without one would stay empty. */
    hasPlace(): boolean {
        return this.mosaic.clientWidth > 0;
    }

    isInSight(): boolean {
        const { top, bottom } = this.element.getBoundingClientRect();
        return bottom > 0 && top < innerHeight;
    }

    /** Redraws the curves, which need no map, in the current colours; later if the card has no size now. */
    recolour(): void {
        if (this.hasPlace()) this.drawCurves();
        else this.drawn = false;
    }

    private drawCurves(): void {
        this.fit(this.course);
        this.fit(this.glyph);
        this.fit(this.spectrum);
        drawSpectrumGlyph(this.spectrum, spectrumOf(this.component).percent);
        const match = this.match();
        drawSparkline(this.course, shownCourse(this.run, this.component), match && scaledPredictor(match).values);
        drawFingerprintGlyph(this.glyph, fingerprintOf(this.component));
    }

    draw(look: Look): Promise<void> {
        this.drawn = true;
        this.drawing = this.drawImages(look);
        return this.drawing;
    }

    private async drawImages(look: Look): Promise<void> {
        this.drawCurves();
        const map = await shownMap(this.run, this.component);
        if (!this.hasPlace()) {
            // the reader has moved to another view in the meantime
            this.drawn = false;
            return;
        }
        this.fit(this.mosaic);
        const slices = drawCard(this.mosaic, this.run, map, look);
        this.describe(slices);
        this.element.dataset.drawn = 'true';
    }

    private describe(slices: DrawnSlice[]): void {
        const { highest, lowest, title } = this.component;
        const ends = [lowest, highest].map((end) => end * this.run.signs.of(this.component)).sort((a, b) => a - b);
        this.mosaic.dataset.slices = JSON.stringify(slices);
        this.mosaic.setAttribute(
            'aria-label',
            `Map of ${title}, ${slicesText(slices, this.run.grid.oriented)}; z from ${fixed(ends[0], 1)} to ${fixed(ends[1], 1)}`,
        );
    }

    // The best-matching predictor, unless it is weak.
    private match(): PredictorMatch | null {
        const match = predictorMatch(this.run, this.component);
        return match && !isWeak(match) ? match : null;
    }

    private fit(canvas: HTMLCanvasElement): void {
        const ratio = Math.min(2, window.devicePixelRatio || 1);
        canvas.width = Math.max(1, Math.round(canvas.clientWidth * ratio));
        canvas.height = Math.max(1, Math.round(canvas.clientHeight * ratio));
    }
}
