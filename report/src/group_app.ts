// The page of a group analysis.
import { Address, followOwnLinks } from './address';
import { defaultLook, type Look } from './brain/look';
import { nextFrame, painted } from './frames';
import { AmplitudesView } from './group/amplitudes_view';
import { ComponentsView } from './group/components_view';
import { CorrelationsView } from './group/correlations_view';
import { runAddress } from './group/dot_row';
import { type Group, type GroupComponent, type GroupRun, readGroup } from './group/group';
import { MethodsView } from './group/methods_view';
import { RunView } from './group/run_view';
import { startTheme } from './theme';
import { isForPage } from './views/key_target';
import { pageHead } from './views/page_head';
import type { View } from './views/view';

const THRESHOLD = 2.5; // on |z|, at first

class GroupApp {
    private readonly look: Look = defaultLook(THRESHOLD); // shared by all maps
    private readonly components: ComponentsView;
    private readonly views = new Map<string, View>(); // those without parameters, made when opened
    private runView: RunView | null = null;
    private view: View | null = null;
    private component: GroupComponent; // shown last
    private run: GroupRun;
    private routes = 0; // number of routes taken so far
    private drawing: Promise<void> = Promise.resolve();
    private readonly address = new Address();
    private readonly head: ReturnType<typeof pageHead>;

    constructor(
        private readonly group: Group,
        private readonly place: HTMLElement,
    ) {
        [this.component] = group.components;
        [this.run] = group.runs;
        this.components = new ComponentsView(group, this.look);
        this.head = pageHead(
            'Group ICA',
            group.name,
            [
                ['#/', 'Components'],
                ['#/component', 'Runs'],
                ['#/amplitudes', 'Amplitudes'],
                ['#/correlations', 'Correlations'],
                ['#/methods', 'Methods'],
            ],
            () => void this.print(),
        );
        document.title = `Group ICA: ${group.name}`;
        addEventListener('hashchange', () => void this.route());
        followOwnLinks();
        addEventListener('keydown', (event) => this.key(event));
    }

    async route(): Promise<void> {
        this.address.forget();
        const own = ++this.routes;
        const [, part = '', component, run] = location.hash.replace(/^#/, '').split('/').map(decodeURIComponent);
        this.head.mark(`/${part}`);
        if (part === 'component') {
            this.component = this.group.components.find(({ name }) => name === component) ?? this.component;
            this.run = this.group.runs.find(({ name }) => name === run) ?? this.run;
            this.runView ??= new RunView(this.group, this.look, (...next) => void this.stepTo(...next));
            this.runView.present(this.component, this.run);
            this.enter(this.runView);
            await this.draw(own);
        } else {
            this.enter(this.viewOf(part));
            document.body.dataset.shown = part || 'components';
        }
    }

    private viewOf(part: string): View {
        const made = {
            amplitudes: () => new AmplitudesView(this.group),
            correlations: () => new CorrelationsView(this.group),
            methods: () => new MethodsView(this.group),
        }[part];
        if (!made) return this.components;
        const view = this.views.get(part) ?? made();
        this.views.set(part, view);
        return view;
    }

    // The names follow the keys at once, the images as soon as they are drawn; what the reader has left is not drawn.
    private async stepTo(component: GroupComponent, run: GroupRun): Promise<void> {
        const own = ++this.routes;
        [this.component, this.run] = [component, run];
        this.runView!.present(component, run);
        this.address.set(runAddress(component, run));
        await nextFrame();
        if (own === this.routes) await this.draw(own);
    }

    private async draw(own: number): Promise<void> {
        this.drawing = this.runView!.draw();
        await this.drawing;
        await painted();
        if (own === this.routes) document.body.dataset.shown = `${this.component.name} ${this.run.name}`;
    }

    private async print(): Promise<void> {
        if (this.view === this.components) await this.components.drawAll();
        else await this.drawing;
        await painted();
        print();
    }

    private enter(view: View): void {
        if (this.view === view) return;
        this.view = view;
        this.place.replaceChildren(this.head.element, view.element);
        if (view.enter) view.enter();
        else scrollTo(0, 0);
    }

    private key(event: KeyboardEvent): void {
        if (isForPage(event) && this.view?.key?.(event)) event.preventDefault();
    }
}

async function start(): Promise<void> {
    startTheme();
    const place = document.getElementById('app')!;
    await new GroupApp(await readGroup(), place).route();
}

start().catch((error: unknown) => {
    const place = document.getElementById('app')!;
    place.textContent = `The report cannot be shown: ${error instanceof Error ? error.message : String(error)}`;
    throw error;
});
