"""same_symmetric.py ZNICA: compares the symmetric estimate of the command with numpy's, from the same start.

Ends with status 0 when the maps agree, 1 when they do not, 77 where numpy or nibabel is missing.
"""
import json
import os
import sys
import tempfile
from pathlib import Path

try:
    import nibabel
    import numpy as np
except ImportError as missing:
    print(f"skipped: {missing}")
    sys.exit(1 if "CI" in os.environ else 77)

from reference_ica import centred
from reference_symmetric import start_matrices, symmetric_maps
from same_components import SAMPLE, SEED, command, largest_difference, voxels_of

COMPONENTS = 8  # seven sources and the mean image
STARTS = 3
ALLOWED = 1e-6  # of the largest value; the maps are stored in single precision


def difference(folder, nonlinearity, znica):
    sample, out = folder / f"sample/{SAMPLE}bold.nii.gz", folder / nonlinearity
    mask_file = folder / f"sample/{SAMPLE}desc-brain_mask.nii.gz"
    options = ["--components", COMPONENTS, "--seed", SEED, "--nonlinearity", nonlinearity, "--epsilon", "1e-8"]
    options += ["--approach", "symmetric", "--starts", STARTS, "--no-clustering", "--no-report", "--smooth", 0]
    command(znica, "run", sample, "--mask", mask_file, *options, "--out", out)
    facts = json.loads((out / f"{SAMPLE}desc-ICA_decomposition.json").read_text())
    estimate = facts["SymmetricEstimate"]
    if estimate["StartVoxels"] != facts["Input"]["VoxelsAnalysed"]:
        raise SystemExit("The sample has too many voxels: starts are expected to be tried on all of them.")

    mask = np.asanyarray(nibabel.load(out / f"{SAMPLE}desc-brain_mask.nii.gz").dataobj).ravel(order="F") != 0
    data = voxels_of(nibabel.load(sample), mask)
    maps = voxels_of(nibabel.load(out / f"{SAMPLE}desc-ICA_components.nii.gz"), mask).T
    start = start_matrices(SEED, COMPONENTS, STARTS)[estimate["ChosenStart"] - 1]
    return largest_difference(maps, symmetric_maps(centred(data), COMPONENTS, nonlinearity, start))


def main():
    znica = Path(sys.argv[1])
    agree = True
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        command(znica, "simulate", "--size", "tiny", "--sources", COMPONENTS - 1, "--out", folder / "sample")
        for nonlinearity in ("tanh", "gauss", "cube"):
            largest = difference(folder, nonlinearity, znica)
            print(f"{nonlinearity}: largest relative difference of maps {largest:.1e}, allowed {ALLOWED:.0e}")
            agree &= bool(largest <= ALLOWED)  # False for NaN
    return 0 if agree else 1


if __name__ == "__main__":
    sys.exit(main())
