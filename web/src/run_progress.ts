import { h } from '../../report/src/dom';

// What is counted: components found one after another, and the runs of --repeats.
const SHARES = /^(component|run) (\d+) of (\d+)/;

interface Stage {
    name: string;
    begun: number;
    item: HTMLElement;
    time: HTMLElement;
}

/** The stages of a run with the seconds that each took, and a button that cancels it. */
export class RunProgress {
    readonly element: HTMLElement;
    private readonly bar = h('progress', { 'aria-label': 'Progress' });
    private readonly state = h('p', { class: 'state', role: 'status' }, 'starting');
    private readonly list = h('ol', { class: 'stages' });
    private readonly begun = performance.now();
    private readonly clock: number;
    private stage: Stage | null = null;

    constructor(cancel: () => void) {
        this.element = h(
            'section',
            { class: 'panel running' },
            h('h2', {}, 'Running'),
            this.bar,
            this.state,
            this.list,
            h('button', { class: 'button', id: 'cancel', onclick: cancel }, 'Cancel'),
        );
        this.clock = window.setInterval(() => this.tick(), 500);
    }

    /** A text as the command shows it: a stage, possibly followed by how far it is. */
    show(text: string): void {
        this.state.textContent = text;
        const share = SHARES.exec(text);
        if (share) {
            this.bar.max = Number(share[3]);
            this.bar.value = Number(share[2]) - 1;
        } else {
            this.bar.removeAttribute('value');
        }
        this.enter(share ? `${share[1]}s` : text.split(',')[0]);
    }

    end(): void {
        clearInterval(this.clock);
    }

    get seconds(): number {
        return (performance.now() - this.begun) / 1000;
    }

    private enter(name: string): void {
        if (this.stage?.name === name) return;
        this.tick();
        this.stage?.item.classList.add('done');
        const time = h('span', { class: 'muted' });
        const item = h('li', {}, `${name} `, time);
        this.stage = { name, begun: performance.now(), item, time };
        this.list.append(item);
    }

    private tick(): void {
        if (!this.stage) return;
        this.stage.time.textContent = `${((performance.now() - this.stage.begun) / 1000).toFixed(1)} s`;
    }
}
