import { h } from '../../../report/src/dom';
import { type InputFile, ROLES, type Role } from './roles';

function sizeText(bytes: number): string {
    return bytes < 1e6 ? `${Math.max(1, Math.round(bytes / 1e3))} kB` : `${(bytes / 1e6).toFixed(1)} MB`;
}

/** One row per file: name, size, what it is for. */
export function fileList(inputs: InputFile[], choose: (name: string, role: Role) => void): HTMLElement {
    return h(
        'ul',
        { class: 'files' },
        ...inputs.map(({ file, role }) => {
            const select = h(
                'select',
                {
                    'aria-label': `Use of ${file.name}`,
                    onchange: () => choose(file.name, select.value as Role),
                },
                ...ROLES.map((known) => h('option', { value: known.role, selected: known.role === role }, known.title)),
            );
            return h('li', {}, h('span', { class: 'name' }, file.name), h('small', {}, sizeText(file.size)), select);
        }),
    );
}
