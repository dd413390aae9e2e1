// Made-up files in the form that a run of znica writes: any number of components on any grid, within seconds. The maps
// are noise with one bright ball each, the time courses oscillations, the sixteen parameters random; what matters is
// that the page shows what the files hold.
//
//   node made_up_run.mjs DIR COMPONENTS [small|medium|brain]
import { mkdirSync, writeFileSync } from 'node:fs';
import { argv } from 'node:process';
import { fileURLToPath } from 'node:url';
import { writeNifti } from './nifti.mjs';

export const COLUMNS = [
    'dm_pred_max',
    'dm_pred_index',
    'rms',
    'template_max_corr',
    'template_voi_index',
    'degree_of_clustering',
    'skewness',
    'kurtosis',
    'spatial_entropy',
    'lag1_autocorr',
    'temporal_entropy',
    'power_band_1',
    'power_band_2',
    'power_band_3',
    'power_band_4',
    'power_band_5',
];
const MEASURES = ['explained_variance', 'map_skewness', 'map_kurtosis', 'confound_max_corr', 'confound_name'];
export const STEM = 'sub-made_task-up';
const PREDICTORS = ['left hand', 'right hand'];

/** Small and oblique, with x running from right to left as scanners store it; the others upright. */
const GRIDS = {
    small: {
        size: [26, 30, 24],
        affine: [
            [-5.9, 0.5, 0.3, 74],
            [0.6, 5.9, -0.9, -82],
            [0.2, 0.9, 5.8, -64],
        ],
    },
    medium: {
        size: [40, 48, 36],
        affine: [
            [4, 0, 0, -78],
            [0, 4, 0, -94],
            [0, 0, 4, -70],
        ],
    },
    brain: {
        size: [91, 109, 91],
        affine: [
            [2, 0, 0, -90],
            [0, 2, 0, -126],
            [0, 0, 2, -72],
        ],
    },
};

const QUIET = 0.3; // standard deviation of the noise around balls at known places, far below any threshold

// Mulberry32: the same numbers in every run.
function randomNumbers(seed) {
    let state = seed;
    return () => {
        state = (state + 0x6d2b79f5) | 0;
        let t = Math.imul(state ^ (state >>> 15), 1 | state);
        t = (t + Math.imul(t ^ (t >>> 7), 61 | t)) ^ t;
        return ((t ^ (t >>> 14)) >>> 0) / 4294967296;
    };
}

function normal(random) {
    return Math.sqrt(-2 * Math.log(1 - random())) * Math.cos(2 * Math.PI * random());
}

function forEachVoxel([nx, ny, nz], visit) {
    for (let z = 0, i = 0; z < nz; ++z) {
        for (let y = 0; y < ny; ++y) for (let x = 0; x < nx; ++x, ++i) visit(i, x, y, z);
    }
}

function makeMask(size, filled) {
    const mask = new Uint8Array(size[0] * size[1] * size[2]);
    const half = size.map((n) => (n - 1) / 2);
    // 0.79 of the half axes: the same share of the grid as a brain has in a template
    const radius = half.map((n, axis) => (axis === 2 && filled ? Infinity : n * 0.79));
    const inside = (x, y, z) => [x, y, z].reduce((sum, v, a) => sum + ((v - half[a]) / radius[a]) ** 2, 0) < 1;
    forEachVoxel(size, (i, x, y, z) => {
        mask[i] = inside(x, y, z) ? 1 : 0;
    });
    return mask;
}

function makeMaps(size, mask, count, random, balls) {
    const voxels = mask.length;
    const maps = new Float32Array(voxels * count);
    for (let c = 0; c < count; ++c) {
        const centre = size.map((n) => n * (0.35 + 0.3 * random()));
        const radius = size[0] * 0.09;
        const sign = random() < 0.7 ? 1 : -1;
        const all = balls?.[c] ?? [{ centre, radius, height: 8 * sign }];
        forEachVoxel(size, (i, x, y, z) => {
            if (!mask[i]) return;
            let value = normal(random) * (balls ? QUIET : 1);
            for (const ball of all) {
                const far = Math.hypot(x - ball.centre[0], y - ball.centre[1], z - ball.centre[2]);
                if (far < ball.radius) value += ball.height * (1 - far / ball.radius);
            }
            maps[c * voxels + i] = value;
        });
    }
    return maps;
}

function table(columns, rows) {
    return `${[columns, ...rows].map((row) => row.join('\t')).join('\n')}\n`;
}

/**
 * Writes a run into a folder. `options`: components, grid (small, medium, brain), trMilliseconds (2000), volumes (120),
 * asked (as many as found), design (true), measures (whether the table has the columns beside the sixteen: true),
 * oriented (true); slices: number of axial slices, all of them inside the mask; balls: for each component a list of
 * { centre, radius, height } in voxels and z, instead of a ball at a random place; constant: values of parameters that
 * are the same for all components, by
 * column; input, settings, facts: additions to the description of the run.
 */
export function makeRun(folder, options) {
    const {
        components,
        grid = 'small',
        trMilliseconds = 2000,
        volumes = 120,
        asked = components,
        design = true,
        slices = null,
        balls = null,
        measures = true,
        oriented = true,
        constant = {},
        input = {},
        settings = {},
        facts = {},
    } = options;
    const { affine } = GRIDS[grid];
    const size = [...GRIDS[grid].size.slice(0, 2), slices ?? GRIDS[grid].size[2]];
    const random = randomNumbers(components);
    const mask = makeMask(size, slices !== null);
    const file = (ending) => `${folder}/${STEM}_${ending}`;
    const names = Array.from({ length: components }, (_, c) => `ICA_${String(c).padStart(2, '0')}`);
    mkdirSync(folder, { recursive: true });

    const maps = makeMaps(size, mask, components, random, balls);
    writeNifti(file('desc-ICA_components.nii.gz'), size, components, affine, maps, oriented);
    writeNifti(file('desc-brain_mask.nii.gz'), size, 1, affine, mask, oriented);
    const mean = Float32Array.from(mask, (inside) => (inside ? 800 + 300 * random() : 20 * random()));
    writeNifti(file('desc-mean_bold.nii.gz'), size, 1, affine, mean, oriented);

    const courses = names.map((_, c) =>
        Array.from({ length: volumes }, (_, t) =>
            Math.fround(0.5 + 0.4 * Math.sin(t * (0.05 + 0.02 * (c % 12)) + c) + 0.1 * (random() - 0.5)),
        ),
    );
    const rows = Array.from({ length: volumes }, (_, t) => courses.map((course) => course[t]));
    writeFileSync(file('desc-ICA_mixing.tsv'), table(names, rows));
    if (design) {
        const predictors = Array.from({ length: volumes }, (_, t) => [
            Math.sin(t / 5).toFixed(6),
            Math.cos(t / 9).toFixed(6),
        ]);
        writeFileSync(file('desc-ICA_design.tsv'), table(PREDICTORS, predictors));
    }

    const metrics = names.map((name, c) => {
        const values = COLUMNS.map(() => Math.fround(random()));
        values[1] = design ? 1 + (c % 2) : 1;
        values[4] = 0;
        if (!design) values[0] = 0;
        for (const [column, value] of Object.entries(constant)) values[COLUMNS.indexOf(column)] = value;
        const cells = values.map(String);
        if (c === 2) cells[7] = 'n/a'; // a kurtosis that could not be rescaled
        const more = measures
            ? [(40 / (c + 1)).toFixed(4), c - 1.5, 2.5 + c, (0.1 * (c % 10)).toFixed(2), 'rot_z']
            : [];
        return [name, ...cells, ...more, design ? PREDICTORS[c % 2] : 'n/a', 'n/a', 'n/a'];
    });
    writeFileSync(
        file('desc-ICA_metrics.tsv'),
        table(
            [
                'component',
                ...COLUMNS,
                ...(measures ? MEASURES : []),
                'dm_pred_name',
                'template_voi_name',
                'classification',
            ],
            metrics,
        ),
    );
    writeFileSync(
        file('desc-ICA_metrics.json'),
        JSON.stringify(
            Object.fromEntries(
                [...COLUMNS, ...(measures ? MEASURES : [])].map((column) => [
                    column,
                    { LongName: column, Description: `What ${column} says.`, Units: 'arbitrary' },
                ]),
            ),
        ),
    );
    writeFileSync(
        file('desc-ICA_decomposition.json'),
        JSON.stringify({
            GeneratedBy: { Name: 'znica', Version: '2.0', Plugin: { Name: 'Made up', Version: '2.0', File: 'none' } },
            Input: {
                File: `${STEM}_bold.nii.gz`,
                Size: size,
                Volumes: volumes,
                RepetitionTimeMilliseconds: trMilliseconds,
                VoxelsAnalysed: mask.reduce((sum, inside) => sum + inside, 0),
                ...input,
            },
            Settings: {
                Mask: 'mask.nii.gz',
                Components: asked,
                FirstEigenvalue: 1,
                LastEigenvalue: asked,
                Nonlinearity: 'tanh',
                Epsilon: 1e-4,
                MaxIterations: 500,
                DesignMatrix: design ? 'design.tsv' : null,
                Regions: null,
                RegionNames: null,
                ClusterSize: 10,
                ZThreshold: 2.5,
                Label: null,
                ...settings,
            },
            ComponentsFound: components,
            RetainedVariancePercent: 87.25,
            Predictors: design ? PREDICTORS : [],
            Regions: [],
            Components: names.map((Name, c) => ({
                Name,
                PluginName: `IC ${c + 1}`,
                Iterations: 20 + c,
                Restarts: 0,
                ElapsedSeconds: 1,
            })),
            Eigenvalues: Array.from({ length: volumes }, (_, i) => 1e4 / (i + 1) ** 1.5),
            ElapsedSeconds: { Reading: 1, Plugin: 20, Total: 23 },
            PeakMemoryBytes: 5e8,
            ...facts,
        }),
    );
    return folder;
}

if (argv[1] === fileURLToPath(import.meta.url)) makeRun(argv[2], { components: Number(argv[3]), grid: argv[4] });
