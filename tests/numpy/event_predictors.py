"""event_predictors.py ZNICA: compares the predictors made from a BIDS events file with a convolution in numpy, sampled
every millisecond.

The response is t^5 e^-t / 5! - t^15 e^-t / 15! / 6 up to 32 s; volumes are taken at the middle of their acquisition.
Ends with status 0 when all agree, 1 when they do not, 77 where numpy is missing.
"""

import math
import os
import subprocess
import sys
import tempfile
from pathlib import Path

try:
    import numpy as np
except ImportError as missing:
    print(f"skipped: {missing}")
    sys.exit(1 if "CI" in os.environ else 77)

SAMPLE = "sub-sim_task-blocks"
SECONDS_PER_VOLUME = 2
VOLUMES = 80
STEP = 0.001
EVENTS = [(-4, 6, "early"), (10.5, 20, "task"), (50, 0, "cue"), (61.25, 3, "task"), (70, "n/a", "cue")]


def response():
    t = np.arange(0, 32, STEP) + STEP / 2
    h = t**5 * np.exp(-t) / math.factorial(5) - t**15 * np.exp(-t) / math.factorial(15) / 6
    return h / (h.sum() * STEP)


def predictor(events):
    """At the middle of every volume; a brief event is one millisecond with the area of a second."""
    start = 10.0  # seconds before the first volume, where the earliest event is
    signal = np.zeros(round((start + VOLUMES * SECONDS_PER_VOLUME) / STEP))
    for onset, duration in events:
        brief = duration in (0, "n/a")
        first = round((onset + start) / STEP)
        last = first + 1 if brief else round((onset + duration + start) / STEP)
        signal[first:last] += 1 / STEP if brief else 1
    h = response()
    middles = (np.arange(VOLUMES) + 0.5) * SECONDS_PER_VOLUME
    ends = np.round((middles + start) / STEP).astype(int)  # the steps before a middle count
    padded = np.concatenate([np.zeros(len(h)), signal])
    return np.array([padded[end : end + len(h)] @ h[::-1] * STEP for end in ends])


def main():
    znica = sys.argv[1]
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        subprocess.run([znica, "simulate", "--size", "tiny", "--out", folder / "s"], check=True, capture_output=True)
        rows = ["\t".join(map(str, event)) for event in [("onset", "duration", "trial_type"), *EVENTS]]
        (folder / f"s/{SAMPLE}_events.tsv").write_text("\n".join(rows) + "\n")
        image = folder / f"s/{SAMPLE}_bold.nii.gz"
        arguments = ["--design", "auto", "--components", "2", "--no-clustering", "--out", folder / "out"]
        subprocess.run([znica, "run", image, *arguments], check=True, capture_output=True)
        header, *lines = (folder / f"out/{SAMPLE}_desc-ICA_design.tsv").read_text().splitlines()
    values = np.array([line.split("\t") for line in lines], dtype=float).T
    agree = header.split("\t") == ["cue", "early", "task"]
    for condition, ours in zip(header.split("\t"), values):
        expected = predictor([(onset, duration) for onset, duration, kind in EVENTS if kind == condition])
        difference = np.abs(ours - expected).max()
        # A brief event is half a millisecond late on average, and the response changes by at most 0.1 per second.
        print(f"{condition}: largest difference {difference:.1e}, allowed 1e-04")
        agree &= bool(difference <= 1e-4)
    return 0 if agree else 1


if __name__ == "__main__":
    sys.exit(main())
