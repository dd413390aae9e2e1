"""The data sets on which combinations of options are compared: simulated samples and measured runs."""
import csv
import subprocess
from pathlib import Path
from typing import NamedTuple, Optional

import nibabel
import numpy

from measuring.programs import BUILD

ZNICA = BUILD / "bin" / "znica"
SAMPLES = {  # name: sources, noise in per cent
    "simulated, easy": (8, 1.0),
    "simulated, many sources": (16, 2.0),
    "simulated, noisy": (8, 4.0),
}


class DataSet(NamedTuple):
    name: str
    image: Path
    components: int
    task: numpy.ndarray  # [volumes], the expected course of the task
    truth: Optional[Path]  # folder of a sample
    voxel: float  # mm, geometric mean of the edges


def response(seconds):
    """The difference of two gamma densities, with peaks near 5 s and 15 s and the ratio 6 : 1."""
    from math import factorial

    def density(shape):
        return seconds ** (shape - 1) * numpy.exp(-seconds) / factorial(shape - 1)

    return density(6) - density(16) / 6


def convolved_blocks(table, volumes, repetition):
    """The response to all blocks of an events table, at the beginning of every volume."""
    step = 0.1
    neural = numpy.zeros(int(volumes * repetition / step) + 1)
    with open(table) as stream:
        for row in csv.DictReader(stream, delimiter="\t"):
            begin, length = float(row["onset"]), float(row["duration"])
            neural[int(begin / step) : int((begin + length) / step)] = 1.0
    course = numpy.convolve(neural, response(numpy.arange(0.0, 32.0, step)))
    return course[(numpy.arange(volumes) * repetition / step).astype(int)]


def edge(image):
    return float(numpy.prod(nibabel.load(image).header.get_zooms()[:3]) ** (1 / 3))


def simulated(name, folder):
    sources, noise = SAMPLES[name]
    sample = folder / name.replace(" ", "-").replace(",", "")
    command = [ZNICA, "simulate", "--out", sample, "--sources", sources, "--noise", noise]
    subprocess.run([str(part) for part in command], check=True, stdout=subprocess.DEVNULL)
    image = next(sample.glob("*_bold.nii.gz"))
    design = numpy.genfromtxt(next(sample.glob("*_design.tsv")), skip_header=1, ndmin=2)
    return DataSet(name, image, sources + 1, design[:, 0], sample, edge(image))


def measured(folder):
    image = next(folder.glob("*_bold.nii.gz"))
    header = nibabel.load(image).header
    task = convolved_blocks(folder / "blocks.tsv", header.get_data_shape()[3], float(header.get_zooms()[3]))
    return DataSet(folder.name, image, 20, task, None, edge(image))


def data_sets(measured_folder, folder):
    found = [measured(run) for run in sorted(measured_folder.glob("*")) if (run / "blocks.tsv").exists()]
    if not found:
        print(f"no measured runs in {measured_folder}: simulated samples only")
    return found + [simulated(name, folder) for name in SAMPLES]
