import { h } from '../../../report/src/dom';
import { argumentFor, fileFor, type InputFile } from './roles';

interface Field {
    option: string; // of znica run
    title: string;
    hint: string;
    usual: string; // what is meant when the option is left out
    choices?: [value: string, title: string][];
    rare?: boolean;
    later?: boolean; // has no part in what is read and checked before the run
    shown?: boolean; // changes what is shown before the run
}

const FIELDS: Field[] = [
    { option: '--components', title: 'Components', hint: 'a number, auto or max', usual: '20' },
    { option: '--tr', title: 'TR (s)', hint: 'from sidecar or header', usual: '', shown: true },
    {
        option: '--mask',
        title: 'Mask without a mask file',
        hint: '',
        usual: 'auto',
        choices: [
            ['auto', 'brain (automatic)'],
            ['none', 'none: all voxels'],
        ],
        shown: true,
    },
    { option: '--dummy-scans', title: 'First volumes to omit', hint: '', usual: '0', shown: true },
    { option: '--smooth', title: 'Smoothing', hint: 'mm (FWHM) or auto; 0: none', usual: 'auto', rare: true },
    { option: '--high-pass', title: 'High-pass filter', hint: 'cut-off in seconds; 0: none', usual: '0', rare: true },
    {
        option: '--scale',
        title: 'Scaling',
        hint: '',
        usual: 'none',
        choices: [
            ['none', 'none'],
            ['percent', 'percent of the mean'],
            ['sd', 'unit variance'],
        ],
        rare: true,
    },
    {
        option: '--approach',
        title: 'Approach',
        hint: '',
        usual: 'symmetric',
        later: true,
        choices: [
            ['symmetric', 'symmetric (all at once)'],
            ['deflation', 'deflation (one by one)'],
        ],
        rare: true,
    },
    { option: '--repeats', title: 'Repeats, to measure stability', hint: '', usual: '1', rare: true, later: true },
    { option: '--seed', title: 'Seed', hint: 'random', usual: '', rare: true, later: true },
];

/** The options of a run that are not files, as a form. */
export class Options {
    readonly usual: HTMLElement;
    readonly rare: HTMLElement;
    private readonly inputs = new Map<Field, HTMLInputElement | HTMLSelectElement>();

    /** `changed`: called after a change of an option that is checked before the run; says whether it changes the mask. */
    constructor(changed: (shown: boolean) => void) {
        const controls = (rare: boolean): HTMLElement[] =>
            FIELDS.filter((field) => (field.rare ?? false) === rare).map((field) => this.control(field, changed));
        this.usual = h('div', { class: 'options' }, ...controls(false));
        this.rare = h(
            'details',
            {},
            h('summary', {}, 'More options'),
            h('div', { class: 'options' }, ...controls(true)),
        );
    }

    private control(field: Field, changed: (shown: boolean) => void): HTMLElement {
        const id = `option${field.option}`;
        const input = field.choices
            ? h('select', { id }, ...field.choices.map(([value, title]) => h('option', { value }, title)))
            : h('input', { id, type: 'text', value: field.usual, placeholder: field.hint, size: 8 });
        if (!field.later) input.addEventListener('change', () => changed(field.shown ?? false));
        this.inputs.set(field, input);
        const hint = !field.choices && field.hint !== '' && field.usual !== '' ? h('small', {}, field.hint) : null;
        return h('div', { class: 'option' }, h('label', { for: id }, field.title), input, hint);
    }

    /** Sets an option as if it had been typed. */
    set(option: string, value: string): void {
        for (const [field, input] of this.inputs) {
            if (field.option === option) input.value = value;
        }
    }

    private arguments(fields: Field[]): string[] {
        return fields.flatMap((field) => {
            const value = this.inputs.get(field)!.value.trim();
            return value === '' || value === field.usual ? [] : [field.option, value];
        });
    }

    /** Arguments of `znica preview` for these files. */
    forPreview(inputs: InputFile[]): string[] {
        return [...this.files(inputs, ['mask']), ...this.arguments(this.used(inputs).filter(({ later }) => !later))];
    }

    /** Arguments of `znica run` for these files. */
    forRun(inputs: InputFile[]): string[] {
        return [
            ...this.files(inputs, ['mask', 'design', 'confounds', 'regions']),
            ...this.arguments(this.used(inputs)),
        ];
    }

    // A mask from a file stands in place of the choice.
    private used(inputs: InputFile[]): Field[] {
        return FIELDS.filter(({ option }) => option !== '--mask' || !fileFor(inputs, 'mask'));
    }

    private files(inputs: InputFile[], roles: ('mask' | 'design' | 'confounds' | 'regions')[]): string[] {
        return roles.flatMap((role) => {
            const file = fileFor(inputs, role);
            return file ? [role === 'regions' ? '--rois' : `--${role}`, argumentFor(file)] : [];
        });
    }
}
