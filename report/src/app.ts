import { Address, followOwnLinks } from './address';
import { defaultLook, type Look } from './brain/look';
import { type Denoising, readDenoising } from './data/denoising';
import { type Component, type Run, readRun } from './data/run';
import { nextFrame, painted } from './frames';
import { Labels, labelNamed } from './labels/labels';
import { startTheme } from './theme';
import { ComponentView } from './views/component_view';
import { DenoisingView } from './views/denoising_view';
import { showKeyHelp } from './views/key_help';
import { isForPage } from './views/key_target';
import { Methods } from './views/methods';
import { Overview } from './views/overview';
import { pageHead } from './views/page_head';
import type { View } from './views/view';

class App {
    private readonly labels: Labels;
    private readonly look: Look; // shared by all maps, wherever they are shown
    private readonly overview: Overview;
    private component: ComponentView | null = null;
    private methods: Methods | null = null;
    private denoisingView: DenoisingView | null = null;
    private view: View | null = null;
    private last: string; // name of the component shown last
    private routes = 0; // number of routes taken so far
    private drawing: Promise<void> = Promise.resolve(); // of the component shown last
    private readonly address = new Address();
    private readonly head: ReturnType<typeof pageHead>;

    constructor(
        private readonly run: Run,
        private readonly denoising: Denoising | null,
        private readonly place: HTMLElement,
    ) {
        this.labels = new Labels(
            run.id,
            new Map(run.components.map(({ name, classification }) => [name, labelNamed(classification ?? '')])),
        );
        this.last = run.components[0]?.name ?? '';
        let opened = false;
        this.look = defaultLook(run.facts.Settings.ZThreshold || 2.5);
        this.overview = new Overview(run, this.labels, this.look, () => {
            if (!opened) void painted().then((end) => performance.measure('first view', { start: 0, end }));
            opened = true;
        });
        const { Label } = run.facts.Settings;
        this.head = pageHead(
            'ICA report',
            Label ? `${Label} \u00b7 ${run.name}` : run.name,
            [
                ...(denoising ? [['#/denoising', 'Denoising'] as [string, string]] : []),
                ['#/', 'Overview'],
                ['#/component', 'Component'],
                ['#/methods', 'Methods'],
            ],
            () => void this.print(),
        );
        place.dataset.run = run.id; // whose labels are in the storage
        document.title = `ICA report: ${run.name}`;
        addEventListener('hashchange', () => void this.route());
        followOwnLinks();
        addEventListener('keydown', (event) => this.key(event));
    }

    async route(): Promise<void> {
        const start = performance.now();
        const own = ++this.routes;
        this.address.forget();
        const opened = this.denoising ? '/denoising' : '/'; // without a view in the address
        const [, part = '', name = this.last] = (location.hash.replace(/^#/, '') || opened).split('/');
        const component = this.run.components.find((candidate) => candidate.name === name);
        this.head.mark(part === 'component' && !component ? '/' : `/${part}`);
        if (part === 'component' && component) {
            this.last = component.name;
            this.component ??= new ComponentView(
                this.run,
                this.labels,
                this.look,
                () => this.overview.gallery.shown.map((card) => card.component),
                (next) => void this.stepTo(next),
            );
            this.component.present(component);
            this.enter(this.component);
            await this.drawComponent(this.component, component, start, own);
        } else if (part === 'methods') {
            this.methods ??= new Methods(this.run, this.denoising);
            this.enter(this.methods);
        } else if (part === 'denoising' && this.denoising) {
            this.denoisingView ??= new DenoisingView(this.run, this.denoising, this.look);
            this.enter(this.denoisingView);
            this.drawing = this.denoisingView.draw();
            await this.drawing;
            document.body.dataset.shown = 'denoising';
        } else {
            this.enter(this.overview);
        }
    }

    // From component to component: the name and the keys follow at once, the images as soon as they are drawn. Components
    // that the reader has left by then are not drawn.
    private async stepTo(component: Component): Promise<void> {
        const start = performance.now();
        const own = ++this.routes;
        this.last = component.name;
        this.component!.present(component);
        this.address.set(`#/component/${component.name}`);
        await nextFrame();
        if (own === this.routes) await this.drawComponent(this.component!, component, start, own);
    }

    private async drawComponent(view: ComponentView, component: Component, start: number, own: number): Promise<void> {
        this.drawing = view.draw();
        await this.drawing;
        const end = await painted();
        if (own !== this.routes) return; // the reader has moved on in the meantime
        performance.measure('component change', { start, end });
        document.body.dataset.shown = component.name;
    }

    /** Prints when everything that is in the page is drawn. */
    private async print(): Promise<void> {
        if (this.view === this.overview) await this.overview.gallery.drawAll();
        else await this.drawing;
        await painted();
        print();
    }

    private enter(view: View): void {
        if (this.view === view) return;
        this.view?.leave?.();
        this.place.replaceChildren(this.head.element, view.element);
        this.view = view;
        if (view.enter) view.enter();
        else scrollTo(0, 0);
    }

    private key(event: KeyboardEvent): void {
        if (event.key.toLowerCase() === 'p' && (event.ctrlKey || event.metaKey)) {
            event.preventDefault(); // the browser would print at once
            void this.print();
            return;
        }
        if (!isForPage(event)) return;
        if (event.key === '?') showKeyHelp();
        else if (this.view?.key?.(event)) event.preventDefault();
    }
}

async function start(): Promise<void> {
    startTheme();
    const place = document.getElementById('app')!;
    const [run, denoising] = await Promise.all([readRun(), readDenoising()]);
    const app = new App(run, denoising, place);
    await app.route();
}

start().catch((error: unknown) => {
    const place = document.getElementById('app')!;
    place.textContent = `The report cannot be shown: ${error instanceof Error ? error.message : String(error)}`;
    throw error;
});
