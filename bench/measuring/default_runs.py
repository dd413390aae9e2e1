"""Runs of znica with every combination of preparation and approach."""
import itertools
import subprocess
import sys
import tempfile
import time
from pathlib import Path
from statistics import median
from typing import NamedTuple, Optional

import numpy

from measuring.data_sets import ZNICA, data_sets
from measuring.process_run import environment

APPROACHES = ["deflation", "symmetric"]
PREPARATIONS = {  # name: smoothing in voxels, other options
    "as is": (0, []),
    "smooth 1": (1, []),
    "smooth 1.5": (1.5, []),
    "smooth 2": (2, []),
    "high-pass": (0, ["--high-pass", "128"]),
    "percent": (0, ["--scale", "percent"]),
    "sd": (0, ["--scale", "sd"]),
    "smooth 1.5, sd": (1.5, ["--scale", "sd"]),
    "smooth 2, sd": (2, ["--scale", "sd"]),
    "smooth 2, high-pass": (2, ["--high-pass", "128"]),
    "smooth 2, percent, high-pass": (2, ["--scale", "percent", "--high-pass", "128"]),
    "smooth 2, sd, high-pass": (2, ["--scale", "sd", "--high-pass", "128"]),
    "smooth 1.5, sd, high-pass": (1.5, ["--scale", "sd", "--high-pass", "128"]),
}


class Outcome(NamedTuple):
    data: str
    preparation: str
    approach: str
    task: float  # |r| of the best component with the task, mean over the seeds
    worst: Optional[float]  # |r| of the sources' maps
    middle: Optional[float]
    agreement: Optional[float]  # median |r| of the maps of the first two seeds
    seconds: float


def znica(*arguments):
    done = subprocess.run(
        [str(part) for part in (ZNICA, *arguments)], capture_output=True, text=True, env=environment()
    )
    if done.returncode not in (0, 4):
        raise SystemExit(f"znica {' '.join(map(str, arguments))} failed:\n{done.stderr}")
    return done.stdout


def task_correlation(result, task):
    courses = numpy.genfromtxt(next(result.glob("*_mixing.tsv")), skip_header=1, ndmin=2)
    return max(abs(numpy.corrcoef(course, task)[0, 1]) for course in courses.T)


def source_correlations(result, truth):
    lines = znica("score", result, "--truth", truth).splitlines()[1:-1]
    return [float(line.split()[-1]) for line in lines]


def agreement(results):
    if len(results) < 2:
        return None
    rows = [line.split("\t") for line in znica("compare", *results[:2]).splitlines()[1:]]
    return median(abs(float(row[2])) for row in rows if len(row) == 3 and row[2] != "n/a")


def measure(data, preparation, approach, seeds, folder):
    voxels, options = PREPARATIONS[preparation]
    options = options + ["--smooth", round(voxels * data.voxel, 3), "--approach", approach, "--no-report", "--quiet"]
    results, seconds = [], []
    for seed in range(1, seeds + 1):
        results.append(folder / str(seed))
        begin = time.perf_counter()
        znica("run", data.image, "--out", results[-1], "--components", data.components, "--seed", seed, *options)
        seconds.append(time.perf_counter() - begin)
    sources = [source_correlations(result, data.truth) for result in results] if data.truth else []
    return Outcome(
        data.name,
        preparation,
        approach,
        float(numpy.mean([task_correlation(result, data.task) for result in results])),
        min(map(min, sources)) if sources else None,
        median(itertools.chain(*sources)) if sources else None,
        agreement(results),
        min(seconds),
    )


def measure_all(measured_folder, seeds):
    outcomes = []
    with tempfile.TemporaryDirectory() as place:
        for data in data_sets(measured_folder, Path(place)):
            for preparation, approach in itertools.product(PREPARATIONS, APPROACHES):
                with tempfile.TemporaryDirectory() as folder:
                    outcomes.append(measure(data, preparation, approach, seeds, Path(folder)))
                    print(outcomes[-1], file=sys.stderr, flush=True)
    return outcomes
