"""compare_methods.py ZNICA RESULT BOLD LABELS [OPTION...]: denoises an image with each method and prints a table of
DVARS, temporal SNR and task |z| before and after. RESULT is of `znica run --design`, and has the predictors.

Task z: all predictors, cosines down to 128 s and a constant are fitted to every voxel of the mask by ordinary least
squares; z belongs to the t value of the mean of the predictors' coefficients, with the degrees of freedom that
denoising has left. The voxels with z > 3.1 before are the same in all rows of the column "mean |z| there".
"""

import subprocess
import sys
import tempfile
from pathlib import Path

import nibabel
import numpy as np
from scipy import stats

CUT_OFF = 128.0  # seconds
THRESHOLD = 3.1


def only(folder, ending):
    return next(Path(folder).glob(f"*{ending}"))


def measures(folder):
    rows = [line.split("\t") for line in only(folder, "_desc-denoise_qc.tsv").read_text().splitlines()[1:]]
    return {name: (float(before), float(after)) for name, before, after, _ in rows}


def task_z(data, predictors, tr, lost):
    volumes = data.shape[1]
    t = np.arange(volumes)
    cosines = [np.cos(np.pi * k * (t + 0.5) / volumes) for k in range(1, int(np.ceil(2 * volumes * tr / CUT_OFF)))]
    design = np.column_stack([predictors, *cosines, np.ones(volumes)])
    inverse = np.linalg.pinv(design)
    beta = inverse @ data.T
    degrees = volumes - np.linalg.matrix_rank(design) - lost
    variance = ((data.T - design @ beta) ** 2).sum(axis=0) / degrees
    contrast = np.zeros(design.shape[1])
    contrast[: predictors.shape[1]] = 1.0 / predictors.shape[1]
    spread = np.sqrt(variance * (contrast @ inverse @ inverse.T @ contrast))
    value = (contrast @ beta) / np.where(spread > 0, spread, np.inf)
    return np.sign(value) * stats.norm.isf(stats.t.sf(np.abs(value), degrees))


def main():
    znica, result, bold, labels, *options = sys.argv[1:]
    mask = np.asanyarray(nibabel.load(only(result, "_desc-brain_mask.nii.gz")).dataobj) != 0
    predictors = np.loadtxt(only(result, "_desc-ICA_design.tsv"), skiprows=1, ndmin=2)
    image = nibabel.load(bold)
    tr = float(image.header["pixdim"][4])

    def series(file):
        return np.asanyarray(nibabel.load(file).dataobj)[mask][:, -len(predictors) :].astype(np.float64)

    before = task_z(series(bold), predictors, tr, 0)
    active = before > THRESHOLD

    def row(name, dvars, tsnr, degrees, z):
        cells = [name, f"{dvars:.2f}", f"{tsnr:.1f}", f"{degrees:.0f}", f"{(z > THRESHOLD).sum()}"]
        cells += [f"{np.abs(z[active]).mean():.2f}", f"{z.max():.1f}"]
        return "| " + " | ".join(cells) + " |"

    heads = ["image", "DVARS, median", "tSNR, median", "degrees of freedom", "voxels with z > 3.1"]
    heads += ["mean \\|z\\| there", "largest z"]
    print("| " + " | ".join(heads) + " |")
    print("|" + "---|" * len(heads))
    rows = []
    with tempfile.TemporaryDirectory() as folder:
        for method in ("nonaggr", "aggr", "orthaggr"):
            out = Path(folder) / method
            command = [znica, "denoise", result, bold, "--labels", labels, "--method", method, "--out", out]
            subprocess.run([*command, "--no-report", "--quiet", *options], check=True)
            values = {name: after for name, (_, after) in measures(out).items()}
            original = {name: first for name, (first, _) in measures(out).items()}
            lost = round(original["components"] - values["components"])  # the cosines are in the design anyway
            z = task_z(series(only(out, "_bold.nii.gz")), predictors, tr, lost)
            rows.append(row(method, values["dvars_median"], values["tsnr_median"], values["degrees_of_freedom"], z))
    print(row("as it was", original["dvars_median"], original["tsnr_median"], original["degrees_of_freedom"], before))
    print("\n".join(rows))


if __name__ == "__main__":
    main()
