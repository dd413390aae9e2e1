"""same_components.py ZNICA: runs the command on a simulated sample and compares its files with numpy's analysis.

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

from reference_ica import centred, ica
from start_vectors import start_vectors

SEED = 11
COMPONENTS = 5  # four sources and the mean image
SAMPLE = "sub-sim_task-blocks_"


def command(*arguments):
    subprocess.run([str(argument) for argument in arguments], check=True, stdout=subprocess.DEVNULL)


def voxels_of(image, mask):
    """V x anything: the voxels of the mask, x fastest."""
    values = np.asanyarray(image.dataobj)
    return values.reshape(-1, values.shape[-1], order="F")[mask]


def largest_difference(ours, theirs):
    return np.abs(ours - theirs).max() / np.abs(theirs).max()


def unit_range(courses):
    """Every column from 0 to 1, as the host gets the time courses."""
    return (courses - courses.min(axis=0)) / np.ptp(courses, axis=0)


def compare(folder, nonlinearity, znica):
    out = folder / nonlinearity
    command(
        znica,
        "run",
        "--as-is",
        folder / f"sample/{SAMPLE}bold.nii.gz",
        "--mask",
        folder / f"sample/{SAMPLE}desc-brain_mask.nii.gz",
        "--components",
        COMPONENTS,
        "--seed",
        SEED,
        "--nonlinearity",
        nonlinearity,
        "--no-clustering",
        "--no-report",
        "--out",
        out,
    )
    mask = np.asanyarray(nibabel.load(out / f"{SAMPLE}desc-brain_mask.nii.gz").dataobj).ravel(order="F") != 0
    data = voxels_of(nibabel.load(folder / f"sample/{SAMPLE}bold.nii.gz"), mask)
    maps = voxels_of(nibabel.load(out / f"{SAMPLE}desc-ICA_components.nii.gz"), mask).T
    courses = np.loadtxt(out / f"{SAMPLE}desc-ICA_mixing.tsv", skiprows=1)
    facts = json.loads((out / f"{SAMPLE}desc-ICA_decomposition.json").read_text())

    expected = ica(centred(data), COMPONENTS, nonlinearity, start_vectors(SEED, COMPONENTS))
    return {
        "eigenvalues": (largest_difference(np.array(facts["Eigenvalues"]), expected[0]), 1e-9),
        "maps": (largest_difference(maps, expected[1]), 1e-5),
        "time courses": (largest_difference(courses, unit_range(expected[2])), 1e-5),
        "iterations": (
            largest_difference(np.array([c["Iterations"] for c in facts["Components"]]), np.array(expected[3])),
            0.0,
        ),
    }


def main():
    znica = Path(sys.argv[1])
    agree = True
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        command(znica, "simulate", "--size", "tiny", "--sources", COMPONENTS - 1, "--out", folder / "sample")
        for nonlinearity in ("tanh", "gauss", "cube"):
            for what, (difference, allowed) in compare(folder, nonlinearity, znica).items():
                print(f"{nonlinearity}: largest relative difference of {what} {difference:.1e}, allowed {allowed:.0e}")
                agree &= bool(difference <= allowed)  # False for NaN
    return 0 if agree else 1


if __name__ == "__main__":
    sys.exit(main())
