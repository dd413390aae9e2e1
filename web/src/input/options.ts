import { h } from '../../../report/src/dom';
import { FIELDS, type Field } from './fields';
import { argumentFor, fileFor, type InputFile, type Role } from './roles';

const FILE_OPTIONS: [Role, string][] = [
    ['mask', '--mask'],
    ['design', '--design'],
    ['confounds', '--confounds'],
    ['regions', '--rois'],
    ['names', '--roi-names'],
];

/** The options of a run that are not files, as a form. */
export class Options {
    readonly usual: HTMLElement;
    readonly rare: HTMLElement;
    private readonly inputs = new Map<string, HTMLInputElement | HTMLSelectElement>();
    private files: InputFile[] = [];

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
            : field.flag
              ? h('input', { id, type: 'checkbox' })
              : h('input', { id, type: 'text', value: field.usual, placeholder: field.hint, size: 8 });
        input.addEventListener('change', () => {
            this.update();
            if (!field.later) changed(field.shown ?? false);
        });
        this.inputs.set(field.option, input);
        const placeheld = field.choices || (field.usual === '' && !field.flag);
        const hint = field.hint !== '' && !placeheld ? h('small', {}, field.hint) : null;
        return h('div', { class: 'option' }, h('label', { for: id }, field.title), input, hint);
    }

    /** Sets an option as if it had been typed. */
    set(option: string, value: string): void {
        this.input(option).value = value;
    }

    /** The files of the next preview or run. Options that do not apply with them cannot be used. */
    take(files: InputFile[]): void {
        this.files = files;
        this.update();
    }

    /** Arguments of `znica preview` for these files. */
    forPreview(): string[] {
        return [...this.fileArguments(), ...this.arguments(FIELDS.filter(({ later }) => !later))];
    }

    /** Arguments of `znica run` for these files. */
    forRun(): string[] {
        return [...this.fileArguments(), ...this.arguments(FIELDS)];
    }

    private input(option: string): HTMLInputElement | HTMLSelectElement {
        return this.inputs.get(option)!;
    }

    // Of a switch: "on", or nothing.
    private value(option: string): string {
        const input = this.input(option);
        if (input.type === 'checkbox') return (input as HTMLInputElement).checked ? 'on' : '';
        return input.value.trim();
    }

    private update(): void {
        const now = {
            has: (role: Role) => fileFor(this.files, role) !== null,
            value: (option: string) => this.value(option),
        };
        for (const { option, applies } of FIELDS) this.input(option).disabled = applies?.(now) === false;
    }

    private arguments(fields: Field[]): string[] {
        return fields.flatMap(({ option, usual, flag }) => {
            const value = this.value(option);
            if (this.input(option).disabled || value === '' || value === usual) return [];
            return flag ? [option] : [option, value];
        });
    }

    private fileArguments(): string[] {
        return FILE_OPTIONS.flatMap(([role, option]) => {
            const file = fileFor(this.files, role);
            return file ? [option, argumentFor(file)] : [];
        });
    }
}
