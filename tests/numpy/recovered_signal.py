"""recovered_signal.py ZNICA: removes the noise sources of a simulated sample with each method, and checks that the
image comes closer to the known clean one, which holds the mean image and the other sources, and nothing else.

Ends with status 0 when it does, 1 when it does not, 77 where numpy or nibabel is missing.
"""

import sys
import tempfile
from pathlib import Path

from denoised_image import SAMPLE, command, nibabel, np, znica

NOISE = ("drift", "pulse", "breathing", "movement")  # sources of the sample that a reader would reject


def image(file):
    return np.asanyarray(nibabel.load(file).dataobj).astype(np.float64)


def correlations(a, b):
    return np.abs(np.corrcoef(np.vstack([a, b]))[: len(a), len(a) :])


def main():
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        truth = folder / f"sample/{SAMPLE}"
        bold, mask = Path(f"{truth}bold.nii.gz"), Path(f"{truth}desc-brain_mask.nii.gz")
        command(znica(), "simulate", "--out", folder / "sample")
        result = folder / "result"
        command(
            *(znica(), "run", bold, "--mask", mask, "--components", 9, "--seed", 1, "--as-is", "--no-report"),
            *("--out", result),
        )
        inside = image(mask) != 0
        sources = image(f"{truth}desc-truth_components.nii.gz")[inside].T
        mixing = Path(f"{truth}desc-truth_mixing.tsv")
        kinds = mixing.read_text().splitlines()[0].split("\t")
        courses = np.loadtxt(mixing, skiprows=1).T
        wanted = [k for k, kind in enumerate(kinds) if kind not in NOISE]
        clean = sources[wanted].T @ courses[wanted]
        clean -= clean.mean(axis=1, keepdims=True)

        maps = image(result / f"{SAMPLE}desc-ICA_components.nii.gz")[inside].T
        similar = correlations(sources, maps)
        rejected = sorted({int(similar[k].argmax()) for k, kind in enumerate(kinds) if kind in NOISE})
        kept = {int(similar[k].argmax()) for k in wanted}
        assert len(rejected) == len(NOISE) and not kept.intersection(rejected), "the sources were not found"

        def error(file):
            data = image(file)[inside]
            return np.linalg.norm(data - data.mean(axis=1, keepdims=True) - clean) / np.linalg.norm(clean)

        before = error(bold)
        print(f"{len(rejected)} of {len(maps)} components rejected")
        print(f"input: relative error of the clean signal {before:.3f}")
        better = True
        for method in ("nonaggr", "aggr", "orthaggr"):
            out = folder / method
            numbers = ",".join(str(k + 1) for k in rejected)
            command(
                znica(), "denoise", result, bold, "--reject", numbers, "--method", method, "--out", out, "--no-report"
            )
            after = error(next(out.glob("*_bold.nii.gz")))
            print(f"{method}: relative error of the clean signal {after:.3f}")
            better &= bool(after < before)
        return 0 if better else 1


if __name__ == "__main__":
    sys.exit(main())
