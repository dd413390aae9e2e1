import type { Role } from './roles';

/** What decides whether an option applies. */
export interface Circumstances {
    has(role: Role): boolean; // there is a file for it
    value(option: string): string;
}

/** An option of `znica run` that is not a file. */
export interface Field {
    option: string; // of znica run
    title: string;
    hint: string;
    usual: string; // what is meant when the option is left out
    choices?: [value: string, title: string][];
    flag?: boolean; // an option without a value, shown as a switch
    rare?: boolean;
    later?: boolean; // has no part in what is read and checked before the run
    shown?: boolean; // changes what is shown before the run
    applies?: (now: Circumstances) => boolean; // always, if left out
}

const prepared = ({ value }: Circumstances): boolean => value('--as-is') === '';

/** In the order of the form. */
export const FIELDS: Field[] = [
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
        applies: ({ has }) => !has('mask'),
    },
    { option: '--dummy-scans', title: 'First volumes to omit', hint: '', usual: '0', shown: true },
    {
        option: '--as-is',
        title: 'As the desktop computes it',
        hint: 'no preparation, components one by one',
        usual: '',
        flag: true,
    },
    {
        option: '--smooth',
        title: 'Smoothing',
        hint: 'mm (FWHM) or auto; 0: none',
        usual: 'auto',
        rare: true,
        applies: prepared,
    },
    {
        option: '--high-pass',
        title: 'High-pass filter',
        hint: 'cut-off in seconds; 0: none',
        usual: '0',
        rare: true,
        applies: prepared,
    },
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
        applies: prepared,
    },
    {
        option: '--columns',
        title: 'Columns of the confounds',
        hint: 'all, or trans_x,rot_z',
        usual: '',
        rare: true,
        applies: ({ has }) => has('confounds'),
    },
    {
        option: '--approach',
        title: 'Approach',
        hint: '',
        usual: 'symmetric',
        choices: [
            ['symmetric', 'symmetric (all at once)'],
            ['deflation', 'deflation (one by one)'],
        ],
        rare: true,
        applies: prepared,
    },
    {
        option: '--starts',
        title: 'Random starts, if symmetric',
        hint: '',
        usual: '3',
        rare: true,
        applies: (now) => prepared(now) && now.value('--approach') === 'symmetric',
    },
    { option: '--repeats', title: 'Repeats, to measure stability', hint: '', usual: '1', rare: true, later: true },
    { option: '--seed', title: 'Seed', hint: 'random', usual: '', rare: true, later: true },
];
