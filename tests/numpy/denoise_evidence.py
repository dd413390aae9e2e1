"""denoise_evidence.py ZNICA: compares the evidence beside a denoised image (DVARS, temporal SNR, removed variance,
carpets) with plain sums in numpy.

Ends with status 0 when all agree, 1 when they do not, 77 where numpy or nibabel is missing.
"""

import sys
import tempfile
from pathlib import Path

from denoised_image import DUMMY_SCANS, REJECTED, SAMPLE, Run, command, nibabel, np, unit, znica


def table(file):
    rows = [line.split("\t") for line in file.read_text().splitlines()]
    return {name: list(column) for name, *column in zip(*rows)}


def numbers(cells):
    return np.array([np.nan if cell == "n/a" else float(cell) for cell in cells])


def image(file):
    return np.asanyarray(nibabel.load(file).dataobj).astype(np.float64)


def dvars(data):
    return np.sqrt((np.diff(data, axis=1) ** 2).mean(axis=0))


def relative(ours, theirs):
    return np.abs(ours - theirs).max() / np.abs(theirs).max()


def main():
    checks = {}
    with tempfile.TemporaryDirectory() as name:
        run = Run(Path(name))
        displacement = np.abs(np.random.default_rng(2).standard_normal(len(run.courses) + DUMMY_SCANS))
        rows = run.confounds.read_text().splitlines()
        cells = ["framewise_displacement", *(f"{value:.6f}" for value in displacement)]
        cells[1] = "n/a"
        run.confounds.write_text("\n".join(f"{row}\t{cell}" for row, cell in zip(rows, cells)) + "\n")
        out = run.folder / "out"
        command(
            *(znica(), "denoise", run.result, run.bold, "--reject", ",".join(str(k + 1) for k in REJECTED)),
            *("--confounds", run.confounds, "--columns", "a,b", "--out", out, "--no-report"),
        )

        def file(ending):
            return out / f"{SAMPLE}desc-{ending}"

        inside = image(run.result / f"{SAMPLE}desc-brain_mask.nii.gz") != 0
        before = run.data[..., DUMMY_SCANS:]
        after = image(file("nonaggrDenoised_bold.nii.gz"))[..., DUMMY_SCANS:]
        masked = {"before": before[inside], "after": after[inside]}
        quality = table(file("denoise_qc.tsv"))
        volumes = table(file("denoise_volumes.tsv"))
        fd = displacement[DUMMY_SCANS:]
        for when, data in masked.items():
            measured = dict(zip(quality["measure"], numbers(quality[when])))
            sd = data.std(axis=1, ddof=1)
            changes = dvars(data)
            checks[f"DVARS {when}"] = relative(numbers(volumes[f"dvars_{when}"])[DUMMY_SCANS + 1 :], changes)
            checks[f"mean of DVARS {when}"] = relative(measured["dvars_mean"], changes.mean())
            checks[f"median of DVARS {when}"] = relative(measured["dvars_median"], np.median(changes))
            checks[f"mean of temporal SNR {when}"] = relative(measured["tsnr_mean"], (data.mean(axis=1) / sd).mean())
            checks[f"median of temporal SNR {when}"] = relative(
                measured["tsnr_median"], np.median(data.mean(axis=1) / sd)
            )
            checks[f"correlation with displacement {when}"] = relative(
                measured["dvars_fd_correlation"], np.corrcoef(changes, fd[1:])[0, 1]
            )
        checks["framewise displacement"] = relative(numbers(volumes["framewise_displacement"])[DUMMY_SCANS:], fd)

        variance = {when: data.var(axis=1).sum() for when, data in masked.items()}
        measured = dict(zip(quality["measure"], numbers(quality["after"])))
        checks["variance left"] = relative(measured["variance"], 100 * variance["after"] / variance["before"])
        checks["degrees of freedom"] = abs(measured["degrees_of_freedom"] - (len(run.courses) - 1 - len(REJECTED) - 2))

        design = unit(np.hstack([run.courses, run.drifting[:, :2]]))
        centred = (masked["before"] - masked["before"].mean(axis=1, keepdims=True)).T
        fit = np.linalg.lstsq(design, centred, rcond=None)[0]
        total = (centred**2).sum()
        shares = [100 * (fit[k] ** 2).sum() / total for k in REJECTED]
        shares.append(100 * ((design[:, -2:] @ fit[-2:]) ** 2).sum() / total)
        parts = table(file("denoise_components.tsv"))
        removed = [
            share for share, fate in zip(parts["variance_removed"], parts["classification"]) if fate == "rejected"
        ]
        checks["variance removed by each part"] = relative(numbers(removed), np.array(shares))

        sds = {when: data.std(axis=3, ddof=1) for when, data in (("before", before), ("after", after))}
        mean = before.mean(axis=3)
        for when, sd in sds.items():
            theirs = np.divide(mean, sd, out=np.zeros_like(mean), where=sds["before"] > 0)
            checks[f"map of temporal SNR {when}"] = relative(image(file(f"denoise_tsnr{when.title()}.nii.gz")), theirs)
        share = np.divide(sds["after"], sds["before"], out=np.ones_like(mean), where=sds["before"] > 0)
        checks["map of removed variance"] = relative(
            image(file("denoise_removedVariance.nii.gz")), 100 * (1 - share**2)
        )

        # Rows of the carpet are voxels in the order of their correlation with the global signal.
        voxels = [tuple(map(int, name.split("_"))) for name in table(file("denoise_carpetBefore.tsv"))]
        place = tuple(np.array(voxels).T)
        series = before[place]
        signal = masked["before"].mean(axis=0)
        order = np.array([np.corrcoef(row, signal)[0, 1] for row in series])
        checks["order of the carpet"] = np.maximum(np.diff(order), 0).max()
        scale = series.std(axis=1, ddof=1, keepdims=True)
        for when, data in (("Before", series), ("After", after[place])):
            theirs = (data - series.mean(axis=1, keepdims=True)) / scale
            ours = np.loadtxt(file(f"denoise_carpet{when}.tsv"), skiprows=1).T
            checks[f"carpet {when.lower()}"] = np.abs(ours - theirs).max() - 0.0005  # three decimals

    agree = True
    for what, difference in checks.items():
        print(f"{what}: relative difference {difference:.1e}, allowed 1e-05")
        agree &= bool(difference <= 1e-5)  # False for NaN
    return 0 if agree else 1


if __name__ == "__main__":
    sys.exit(main())
