"""explained_variance.py ZNICA: compares the time courses in units of the data, the explained variances and the moments
of the maps with a least-squares fit and plain sums in numpy; also that maps times time courses give the data back.

Ends with status 0 when all agree, 1 when they do not, 77 where numpy or nibabel is missing.
"""

import json
import os
import subprocess
import sys
import tempfile
from pathlib import Path

try:
    import nibabel
    import numpy as np
except ImportError as missing:
    print(f"skipped: {missing}")
    sys.exit(1 if "CI" in os.environ else 77)

SAMPLE = "sub-sim_task-blocks_"
DUMMY_SCANS = 3


def command(*arguments):
    subprocess.run([str(argument) for argument in arguments], check=True, stdout=subprocess.DEVNULL)


def analysed(folder, components):
    """Data (V x T), maps (K x V), courses and spatial means (T x K + 1), metrics by column, the record."""
    out = folder / f"result-{components}"
    command(
        *(znica(), "run", folder / f"sample/{SAMPLE}bold.nii.gz", "--components", components, "--seed", 3),
        *("--mask", folder / f"sample/{SAMPLE}desc-brain_mask.nii.gz", "--dummy-scans", DUMMY_SCANS),
        *("--epsilon", 0.9 if components == "max" else 1e-4),  # noise would not converge any better
        *("--no-report", "--out", out),
    )
    image = {name: np.asanyarray(nibabel.load(out / f"{SAMPLE}{name}").dataobj) for name in names()}
    mask = image["desc-brain_mask.nii.gz"] != 0
    data = np.asanyarray(nibabel.load(folder / f"sample/{SAMPLE}bold.nii.gz").dataobj)[mask][:, DUMMY_SCANS:]
    maps = image["desc-ICA_components.nii.gz"][mask].T
    courses = np.loadtxt(out / f"{SAMPLE}desc-ICA_timeseries.tsv", skiprows=1)
    rows = [line.split("\t") for line in (out / f"{SAMPLE}desc-ICA_metrics.tsv").read_text().splitlines()]
    metrics = {name: np.array(column) for name, *column in zip(*rows)}
    facts = json.loads((out / f"{SAMPLE}desc-ICA_decomposition.json").read_text())
    return data.astype(np.float64), maps.astype(np.float64), courses, metrics, facts


def names():
    return ("desc-brain_mask.nii.gz", "desc-ICA_components.nii.gz")


def znica():
    return Path(sys.argv[1])


def moments(maps):
    deviation = maps - maps.mean(axis=1, keepdims=True)
    second, third, fourth = ((deviation**power).mean(axis=1) for power in (2, 3, 4))
    return third / second**1.5, fourth / second**2 - 3


def compare(folder, components):
    data, maps, courses, metrics, facts = analysed(folder, components)
    centred = data - data.mean(axis=0)
    fit = np.linalg.lstsq(maps.T, centred, rcond=None)[0]
    over_time = centred - centred.mean(axis=1, keepdims=True)
    total = (over_time**2).sum()
    fit_over_time = fit - fit.mean(axis=1, keepdims=True)
    explained = [100 * (np.outer(m, c) ** 2).sum() / total for m, c in zip(maps, fit_over_time)]
    together = 100 * (1 - ((over_time - maps.T @ fit_over_time) ** 2).sum() / total)
    skewness, kurtosis = moments(maps)

    def difference(ours, theirs):
        return np.abs(ours - theirs).max() / np.abs(theirs).max()

    checks = {
        "time courses": (difference(courses[:, :-1].T, fit), 1e-5),
        "spatial means": (difference(courses[:, -1], data.mean(axis=0)), 1e-6),
        "explained variance": (difference(metrics["explained_variance"].astype(float), explained), 1e-5),
        "variance kept over time": (abs(facts["RetainedVarianceOverTimePercent"] - together) / together, 1e-5),
        "skewness": (difference(metrics["map_skewness"].astype(float), skewness), 1e-5),
        "kurtosis": (difference(metrics["map_kurtosis"].astype(float), kurtosis), 1e-5),
    }
    if components == "max":  # nothing is left out
        back = maps.T @ courses[:, :-1].T + courses[:, -1]
        checks["data from maps times time courses"] = (difference(back, data), 1e-5)
    return checks


def main():
    agree = True
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        command(znica(), "simulate", "--size", "tiny", "--sources", 4, "--out", folder / "sample")
        for components in (5, "max"):
            for what, (difference, allowed) in compare(folder, components).items():
                print(f"{components} components: relative difference of {what} {difference:.1e}, allowed {allowed:.0e}")
                agree &= bool(difference <= allowed)  # False for NaN
    return 0 if agree else 1


if __name__ == "__main__":
    sys.exit(main())
