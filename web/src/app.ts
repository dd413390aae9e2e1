import { h } from '../../report/src/dom';
import type { Engine } from './engine/engine';
import { Cancelled, type Outcome, type Task } from './engine/task';
import { fileList } from './input/file_list';
import { Options } from './input/options';
import { previewOf } from './input/preview';
import { argumentFor, fileFor, type InputFile, type Role, withFiles, withRole } from './input/roles';
import { sampleInputs, simulate } from './input/sample';
import { resultView } from './result/result_view';
import { RunProgress } from './run_progress';

const NO_MEMORY = 5; // exit status of znica
const GAVE_UP = 4; // fewer components than requested: the result is partial
const LIMIT =
    'A browser tab can use 4 GiB at most. A smaller mask, fewer components or fewer volumes need less; '
    + 'znica on Linux can use all memory of the machine.';

/** The page: input, run and result, one after the other in the same place. */
export class App {
    private inputs: InputFile[] = [];
    private task: Task | null = null;
    private readonly input: HTMLElement;
    private readonly list = h('div');
    private readonly preview = h('div', { 'aria-live': 'polite' });
    private readonly message = h('p', { class: 'message', role: 'alert' });
    private readonly options = new Options((shown) => {
        if (shown || this.run.hidden) void this.look();
    });
    private readonly settings: HTMLElement;
    private readonly run = h('button', { class: 'button main', id: 'run', onclick: () => void this.analyse() }, 'Run');

    constructor(
        private readonly engine: Engine,
        private readonly place: HTMLElement,
    ) {
        const picker = h('input', { type: 'file', multiple: true, id: 'picker', class: 'visually-hidden' });
        picker.addEventListener('change', () => {
            this.add([...picker.files!]);
            picker.value = '';
        });
        const sample = h(
            'button',
            { class: 'button', id: 'sample', onclick: () => void this.makeSample() },
            'Try a sample',
        );
        this.settings = h('div', { hidden: true }, this.options.usual, this.options.rare, this.run);
        this.input = h(
            'div',
            { class: 'view' },
            h(
                'section',
                { class: 'panel drop' },
                h('p', {}, h('strong', {}, 'Drop a 4D NIfTI image here'), ' (.nii, .nii.gz), or'),
                h(
                    'p',
                    { class: 'actions' },
                    picker,
                    h('label', { for: 'picker', class: 'button main' }, 'Choose files'),
                    sample,
                ),
                h(
                    'p',
                    { class: 'muted' },
                    'If you have them, add a mask, events.tsv or a design, confounds, and the JSON sidecar. '
                        + 'Nothing leaves this computer: the page makes no requests, and the analysis runs in this tab.',
                ),
            ),
            h(
                'section',
                { class: 'panel', 'aria-label': 'Input' },
                this.list,
                this.message,
                this.preview,
                this.settings,
            ),
        );
        this.acceptDrops();
        this.update();
        this.show(this.input);
    }

    private acceptDrops(): void {
        addEventListener('dragover', (event) => event.preventDefault());
        addEventListener('drop', (event) => {
            event.preventDefault();
            if (this.place.contains(this.input)) this.add([...(event.dataTransfer?.files ?? [])]);
        });
        addEventListener('beforeunload', (event) => {
            if (!this.place.contains(this.input)) event.preventDefault(); // a run or a result would be lost
        });
    }

    private show(view: HTMLElement): void {
        this.place.replaceChildren(view);
        document.body.dataset.view = view.dataset.view ?? view.className.split(' ').pop()!;
    }

    private add(files: File[]): void {
        if (files.length === 0) return;
        this.inputs = withFiles(this.inputs, files);
        this.update();
        void this.look();
    }

    private choose(name: string, role: Role): void {
        this.inputs = withRole(this.inputs, name, role);
        this.update();
        void this.look();
    }

    private update(): void {
        this.list.replaceChildren(fileList(this.inputs, (name, role) => this.choose(name, role)));
        this.list.parentElement!.hidden = this.inputs.length === 0 && this.message.textContent === '';
    }

    // What the user must read, or nothing.
    private say(text: string): void {
        this.message.textContent = text;
        this.update();
        if (text !== '') this.message.scrollIntoView({ block: 'center' });
    }

    private used(): File[] {
        return this.inputs.filter(({ role }) => role !== 'unused').map(({ file }) => file);
    }

    // Reads the input up to the mask and shows it; what ran before is cancelled.
    private async look(): Promise<void> {
        this.task?.cancel();
        this.run.hidden = true;
        this.preview.replaceChildren();
        this.say('');
        const image = fileFor(this.inputs, 'image');
        this.settings.hidden = !image;
        if (!image) {
            this.say('None of these files is the functional image; choose one for it.');
            return;
        }
        this.preview.replaceChildren(h('p', { class: 'muted' }, `Reading ${image.name} …`));
        const outcome = await this.carryOut(
            this.engine.start(
                ['preview', argumentFor(image), ...this.options.forPreview(this.inputs)],
                this.used(),
                '/preview',
            ),
        );
        if (!outcome) return;
        this.preview.replaceChildren();
        if (outcome.status !== 0) {
            this.complain(outcome);
            return;
        }
        this.preview.replaceChildren(previewOf(outcome.files));
        this.run.hidden = false;
    }

    private async analyse(): Promise<void> {
        const image = fileFor(this.inputs, 'image')!;
        this.say('');
        const progress = new RunProgress(() => this.task?.cancel());
        const view = h('div', { class: 'view', 'data-view': 'running' }, progress.element);
        this.show(view);
        const outcome = await this.carryOut(
            this.engine.start(
                ['run', argumentFor(image), ...this.options.forRun(this.inputs)],
                this.used(),
                '/result',
                { progress: (text) => progress.show(text) },
                true,
            ),
        );
        progress.end();
        if (!outcome || (outcome.status !== 0 && outcome.status !== GAVE_UP)) {
            this.show(this.input);
            this.run.focus();
            if (outcome) this.complain(outcome);
            return;
        }
        const stem = image.name.replace(/\.nii(\.gz)?$/, '').replace(/_bold$/, '');
        const complaint = outcome.complaint.replace(/^znica: /gm, '').replace(/ the partial result is in .*\.$/, '');
        const facts = {
            files: outcome.files,
            stem,
            seconds: progress.seconds,
            heapBytes: outcome.heapBytes,
            complaint,
        };
        this.show(resultView(this.engine, facts, () => this.show(this.input)));
    }

    private async makeSample(): Promise<void> {
        this.task?.cancel();
        this.preview.replaceChildren(h('p', { class: 'muted' }, 'Simulating …'));
        const outcome = await this.carryOut(simulate(this.engine));
        if (!outcome) return;
        this.preview.replaceChildren();
        if (outcome.status !== 0) {
            this.complain(outcome);
            return;
        }
        this.inputs = [];
        this.options.set('--components', '9');
        this.add(sampleInputs(outcome.files));
    }

    // The outcome, or null when the task was cancelled or broke; the latter is said.
    private async carryOut(task: Task): Promise<Outcome | null> {
        this.task = task;
        try {
            return await task.outcome;
        } catch (error) {
            if (error instanceof Cancelled) return null;
            this.preview.replaceChildren();
            this.say(`The analysis broke off: ${error instanceof Error ? error.message : String(error)}.`);
            return null;
        } finally {
            if (this.task === task) this.task = null;
        }
    }

    private complain({ status, complaint }: Outcome): void {
        const said = complaint.replace(/^znica: /gm, '').replace(', or allow more with --memory GIB', '');
        this.say(status === NO_MEMORY ? `${said} ${LIMIT}` : said);
    }
}
