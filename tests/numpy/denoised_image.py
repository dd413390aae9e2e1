"""denoised_image.py ZNICA: compares denoised images with plain least squares in numpy, and checks what denoising must
not change.

Ends with status 0 when all agree, 1 when they do not, 77 where numpy or nibabel is missing.
"""

import os
import shutil
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
TR = 2.0
REJECTED = [1, 3]  # counted from 0
COMPONENTS = 6


def command(*arguments):
    subprocess.run([str(argument) for argument in arguments], check=True, stdout=subprocess.DEVNULL)


class Run:
    """A simulated sample with its analysis, and a table of confounds."""

    def __init__(self, folder):
        self.folder = folder
        self.bold = folder / f"sample/{SAMPLE}bold.nii.gz"
        self.result = folder / "result"
        command(znica(), "simulate", "--size", "tiny", "--sources", 6, "--noise", 2, "--out", folder / "sample")
        command(
            *(znica(), "run", self.bold, "--components", COMPONENTS, "--seed", 3, "--dummy-scans", DUMMY_SCANS),
            *("--mask", folder / f"sample/{SAMPLE}desc-brain_mask.nii.gz", "--as-is", "--no-report"),
            *("--out", self.result),
        )
        self.data = np.asanyarray(nibabel.load(self.bold).dataobj).astype(np.float64)
        self.courses = np.loadtxt(self.result / f"{SAMPLE}desc-ICA_timeseries.tsv", skiprows=1)[:, :COMPONENTS]
        self.confounds = folder / "confounds.tsv"
        volumes = self.data.shape[3]
        drifting = np.cumsum(np.random.default_rng(1).standard_normal((volumes, 2)), axis=0).astype(np.float32)
        rows = [f"{a}\t{b}\t{a - 3 * b}" for a, b in drifting]
        self.confounds.write_text("\n".join(["a\tb\tboth", *rows]) + "\n")
        self.drifting = np.loadtxt(self.confounds, skiprows=1)[DUMMY_SCANS:]

    def denoise(self, *options, result=None):
        """The image that the command writes, (x, y, z, t), and the header of its file."""
        out = self.folder / "denoised"
        shutil.rmtree(out, ignore_errors=True)
        command(znica(), "denoise", result or self.result, self.bold, "--out", out, "--no-report", *options)
        image = nibabel.load(next(out.glob("*_bold.nii.gz")))
        return np.asanyarray(image.dataobj), image.header


def znica():
    return Path(sys.argv[1])


def unit(columns):
    centred = columns - columns.mean(axis=0)
    return centred / np.linalg.norm(centred, axis=0)


def cosines(volumes, cut_off):
    t = np.arange(volumes)
    count = int(np.ceil(2 * volumes * TR / cut_off)) - 1
    return np.stack([np.cos(np.pi * k * (t + 0.5) / volumes) for k in range(1, count + 1)], axis=1)


def expected(run, method, nuisance=None):
    """The formulas of docs/denoising.md, with numpy's pseudo-inverse and one matrix for all voxels."""
    courses = unit(run.courses)
    kept = [k for k in range(COMPONENTS) if k not in REJECTED]
    b, g = courses[:, REJECTED], courses[:, kept]
    f = np.zeros((len(courses), 0)) if nuisance is None else unit(nuisance)
    y = run.data[..., DUMMY_SCANS:].reshape(-1, len(courses)).T
    centred = y - y.mean(axis=0)
    if method == "nonaggr":
        design = np.hstack([b, f, g])
        fit = np.linalg.lstsq(design, centred, rcond=1e-6)[0]
        removed = design[:, : b.shape[1] + f.shape[1]] @ fit[: b.shape[1] + f.shape[1]]
    else:
        if method == "orthaggr":
            b = b - g @ (np.linalg.pinv(g) @ b)
        design = np.hstack([b, f])
        removed = design @ (np.linalg.pinv(design, rcond=1e-6) @ centred)
    result = run.data.copy()
    result[..., DUMMY_SCANS:] = (y - removed).T.reshape(result[..., DUMMY_SCANS:].shape)
    return result


def difference(run, ours, theirs):
    """Largest difference relative to the largest change over time in the data."""
    varying = run.data[..., DUMMY_SCANS:]
    return np.abs(ours - theirs).max() / np.abs(varying - varying.mean(axis=3, keepdims=True)).max()


def rescaled(run):
    """The same result with every time course multiplied by another number."""
    copy = run.folder / "rescaled"
    shutil.copytree(run.result, copy)
    table = copy / f"{SAMPLE}desc-ICA_timeseries.tsv"
    header, *rows = table.read_text().splitlines()
    factors = [(-7.3) ** k for k in range(-2, COMPONENTS - 2)] + [1.0]
    scaled = ["\t".join(f"{float(x) * f:.17g}" for x, f in zip(row.split("\t"), factors)) for row in rows]
    table.write_text("\n".join([header, *scaled]) + "\n")
    return copy


def main():
    checks = []  # what, value, allowed

    def check(what, value, allowed):
        checks.append((what, float(value), allowed))

    with tempfile.TemporaryDirectory() as name:
        run = Run(Path(name))
        reject = ("--reject", ",".join(str(k + 1) for k in REJECTED))
        both = cosines(run.data.shape[3] - DUMMY_SCANS, 60)
        for method in ("nonaggr", "aggr", "orthaggr"):
            options = (*reject, "--method", method)
            ours, header = run.denoise(*options)
            check(f"{method}", difference(run, ours, expected(run, method)), 1e-5)
            check(f"{method}: the repetition time", abs(header["pixdim"][4] - TR), 0)
            analysed = (
                ours[..., DUMMY_SCANS:].mean(axis=3, dtype=np.float64),
                run.data[..., DUMMY_SCANS:].mean(axis=3),
            )
            check(f"{method}: the mean image", np.abs(analysed[0] - analysed[1]).max() / run.data.max(), 1e-7)
            check(f"{method}: dummy scans", np.abs(ours - run.data)[..., :DUMMY_SCANS].max(), 0)
            check(
                f"{method}: rescaled courses",
                difference(run, run.denoise(*options, result=rescaled(run))[0], ours),
                1e-6,
            )
            shutil.rmtree(run.folder / "rescaled")

            # Three confounds of which one is a combination of the others, and a high-pass filter.
            nuisance = np.hstack([run.drifting, both])
            more = (*options, "--confounds", run.confounds, "--high-pass", 60)
            check(
                f"{method}, confounds, filter",
                difference(run, run.denoise(*more)[0], expected(run, method, nuisance)),
                1e-5,
            )

        # No component rejected: the image is that of the input.
        labels = run.folder / "labels.tsv"
        labels.write_text("component\tclassification\tnote\nICA_00\tsignal\tn/a\n")
        check("none rejected", np.abs(run.denoise("--labels", labels)[0] - run.data.astype(np.float32)).max(), 0)

        # All rejected, aggressively: the residual of the fit of all components.
        everything = ",".join(str(k + 1) for k in range(COMPONENTS))
        ours, _ = run.denoise("--reject", everything, "--method", "aggr")
        y = run.data[..., DUMMY_SCANS:].reshape(-1, len(run.courses)).T
        design = np.hstack([np.ones((len(run.courses), 1)), run.courses])
        residual = y - design @ np.linalg.lstsq(design, y, rcond=None)[0] + y.mean(axis=0)
        flat = ours[..., DUMMY_SCANS:].reshape(-1, len(run.courses)).T
        check("all rejected with aggr", np.abs(flat - residual).max() / np.abs(y - y.mean(axis=0)).max(), 1e-5)

    for what, value, allowed in checks:
        print(f"{what}: difference {value:.1e}, allowed {allowed:.0e}")
    return 0 if all(value <= allowed for _, value, allowed in checks) else 1  # False for NaN


if __name__ == "__main__":
    sys.exit(main())
