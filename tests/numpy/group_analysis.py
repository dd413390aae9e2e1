"""group_analysis.py ZNICA: a whole group analysis of 12 simulated subjects, compared with the truth, with the
exact PCA of all data in numpy and FastICA of scikit-learn, and with a dual regression in numpy and scipy.

Ends with status 0 when all agree, 1 when they do not, 77 where a library is missing.
"""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

try:
    import nibabel
    import numpy as np
    from scipy import stats
    from sklearn.decomposition import FastICA
except ImportError as missing:
    print(f"skipped: {missing}")
    sys.exit(1 if "CI" in os.environ else 77)

SUBJECTS = 12
SOURCES = 8
CUT_OFF = 128.0


def znica(*arguments):
    command = [sys.argv[1], *(str(argument) for argument in arguments)]
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)


def group(step, study, *arguments):
    options = ("--components", SOURCES, "--repeats", 3)
    znica("group", step, study, *arguments, *(options if step in ("ica", "all") else ()), "--quiet")


def image(file):
    return np.asanyarray(nibabel.load(file).dataobj)


def prepared(file, mask, tr=2.0):
    """Per cent signal change without slow cosines, the means over time and over voxels removed (V x T)."""
    data = image(file)[mask].astype(np.float64)
    volumes = data.shape[1]
    count = int(np.ceil(2 * volumes * tr / CUT_OFF)) - 1
    times = np.arange(volumes) + 0.5
    cosines = [np.cos(np.pi * k * times / volumes) for k in range(1, count + 1)]
    basis = np.array(cosines).T if cosines else np.zeros((volumes, 0))
    data -= np.linalg.lstsq(basis, data.T, rcond=None)[0].T @ basis.T
    data = 100 * data / data.mean(axis=1, keepdims=True)
    data -= data.mean(axis=1, keepdims=True)
    return data - data.mean(axis=0), count


def standardised(maps):
    return (maps - maps.mean(axis=1, keepdims=True)) / maps.std(axis=1, keepdims=True)


def correlations(a, b):
    return standardised(a) @ standardised(b).T / a.shape[1]


def dual_regression(data, maps, lost):
    courses = np.linalg.lstsq(maps.T, data, rcond=None)[0]
    courses -= courses.mean(axis=1, keepdims=True)
    amplitudes = courses.std(axis=1)
    courses /= amplitudes[:, None]
    effects = np.linalg.lstsq(courses.T, data.T, rcond=None)[0]
    residuals = data - effects.T @ courses
    freedom = data.shape[1] - 1 - lost - len(maps)
    variances = np.diag(np.linalg.inv(courses @ courses.T))
    t = effects / np.sqrt((residuals**2).sum(axis=1) / freedom * variances[:, None])
    tails = stats.t.logsf(np.abs(t), freedom)
    return courses, amplitudes, effects, np.sign(t) * -stats.norm.ppf(np.exp(tails))


def difference(ours, theirs):
    return np.abs(ours - theirs).max() / np.abs(theirs).max()


def compare(folder):
    sample, study = folder / "sample", folder / "study"
    znica("simulate", "--subjects", SUBJECTS, "--size", "tiny", "--sources", SOURCES, "--out", sample)
    files = sorted(sample.glob("sub-*/func/*_bold.nii.gz"))
    group("all", study, *files)

    mask = image(study / "desc-brain_mask.nii.gz") != 0
    maps = image(study / "desc-groupICA_components.nii.gz")[mask].T.astype(np.float64)
    truth = image(next(sample.glob("*desc-truth_components.nii.gz")))[mask].T.astype(np.float64)
    runs = [prepared(file, mask) for file in files]
    everything = np.concatenate([data for data, _ in runs], axis=1)

    # Temporal concatenation without a shortcut: the exact PCA of all volumes, and another program's ICA.
    left, _, _ = np.linalg.svd(everything, full_matrices=False)
    ica = FastICA(whiten=False, random_state=1, tol=1e-6, max_iter=2000)
    exact = ica.fit_transform(left[:, :SOURCES] * np.sqrt(len(left))).T
    similarity = np.abs(correlations(truth, maps))
    component = similarity.argmax(axis=1)
    amplitudes = np.genfromtxt(study / "desc-groupICA_amplitudes.tsv", skip_header=1)[:, 1 : SOURCES + 1]
    strengths = np.genfromtxt(sample / "desc-truth_amplitudes.tsv", skip_header=1)[:, 1:]
    course_r, worst = [], {"courses": 0.0, "amplitudes": 0.0, "effects": 0.0, "z": 0.0}
    for index, (file, (data, lost)) in enumerate(zip(files, runs)):
        stem = file.name.removesuffix("_bold.nii.gz")
        ours = study / "dualreg" / f"{stem}_desc-dualreg_"
        courses = np.loadtxt(f"{ours}timeseries.tsv", skiprows=1).T
        expected = dual_regression(data, maps, lost)
        found = (
            *(courses, amplitudes[index]),
            *(image(f"{ours}stat-{kind}_statmap.nii.gz")[mask].T for kind in ("effect", "z")),
        )
        for name, a, b in zip(worst, found, expected):
            worst[name] = max(worst[name], difference(a, b))
        true_courses = np.loadtxt(file.parent / f"{stem}_desc-truth_mixing.tsv", skiprows=1).T
        course_r.append(np.abs(np.diag(correlations(true_courses, courses[component]))))
    at_least = {
        "every source is found, |r| of the maps": (similarity.max(axis=1).min(), 0.9),
        "agreement with FastICA of scikit-learn on the exact PCA, |r|": (
            np.abs(correlations(exact, maps)).max(axis=1).min(),
            0.99,
        ),
        "amplitudes over subjects, r": (
            min(np.corrcoef(strengths[:, s], amplitudes[:, component[s]])[0, 1] for s in range(SOURCES)),
            0.9,
        ),
        "courses, median |r|": (np.median(course_r), 0.95),
    }
    # znica prepares the data in single precision, and approximates the deviates of large t values.
    at_most = {f"dual regression, {name}": (value, 1e-5 if name != "z" else 1e-4) for name, value in worst.items()}
    return at_least, at_most, len(set(component)) == SOURCES


def main():
    with tempfile.TemporaryDirectory() as name:
        at_least, at_most, distinct = compare(Path(name))
    agree = distinct
    for what, (value, bound) in at_least.items():
        print(f"{what}: {value:.4f}, at least {bound}")
        agree &= bool(value >= bound)  # False for NaN
    for what, (value, bound) in at_most.items():
        print(f"relative difference, {what}: {value:.1e}, at most {bound:.0e}")
        agree &= bool(value <= bound)
    return 0 if agree else 1


if __name__ == "__main__":
    sys.exit(main())
