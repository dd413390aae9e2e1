/** What a file is for. `beside`: only found by its name, like the sidecar of an image. */
export type Role = 'image' | 'mask' | 'design' | 'confounds' | 'regions' | 'beside' | 'unused';

export const ROLES: { role: Role; title: string }[] = [
    { role: 'image', title: 'functional image (4D)' },
    { role: 'mask', title: 'mask' },
    { role: 'design', title: 'design: events or predictors' },
    { role: 'confounds', title: 'confounds' },
    { role: 'regions', title: 'regions (labels)' },
    { role: 'beside', title: 'sidecar (JSON) or data (.img)' },
    { role: 'unused', title: 'not used' },
];

export interface InputFile {
    file: File;
    role: Role;
}

// By name and type alone; the reader can choose otherwise.
function likelyRole(name: string): Role {
    const lower = name.toLowerCase();
    if (/\.(nii|nii\.gz)$/.test(lower)) {
        if (/mask/.test(lower)) return 'mask';
        return /dseg|atlas|parcellation/.test(lower) ? 'regions' : 'image';
    }
    if (/\.(json|img|img\.gz)$/.test(lower)) return 'beside';
    if (/confounds/.test(lower)) return 'confounds';
    return /\.(tsv|csv|1d|mat|rtc|txt)$/.test(lower) ? 'design' : 'image';
}

/** The name as an argument of the command, where a name that begins with a dash would be an option. */
export function argumentFor({ name }: File): string {
    return name.startsWith('-') ? `./${name}` : name;
}

/** The files with new ones added; a role that only one file can have goes to the newest. */
export function withFiles(inputs: InputFile[], added: File[]): InputFile[] {
    let all = inputs.filter(({ file }) => added.every((other) => other.name !== file.name));
    for (const file of added) all = withRole([...all, { file, role: 'unused' }], file.name, likelyRole(file.name));
    return all;
}

/** The files after one of them was given a role. */
export function withRole(inputs: InputFile[], name: string, role: Role): InputFile[] {
    const single = role !== 'beside' && role !== 'unused';
    return inputs.map((input) => {
        if (input.file.name === name) return { ...input, role };
        return single && input.role === role ? { ...input, role: 'unused' } : input;
    });
}

export function fileFor(inputs: InputFile[], role: Role): File | null {
    return inputs.find((input) => input.role === role)?.file ?? null;
}
