"""The series on which the criteria for the number of components are compared."""
import itertools
from collections import namedtuple
from pathlib import Path

import numpy

from measuring.component_criteria import smoothed
from measuring.programs import ROOT
from measuring.simulated_series import Series, simulate

DATA = ROOT.parent / "shared" / "data"
SMALL = DATA / "studyforrest-oneback-small"
IMAGES = {
    "one-back, 6 mm voxels": (SMALL / "oneback_small_bold.nii.gz", SMALL / "oneback_small_mask.nii.gz"),
    "one-back, 3 mm voxels": (DATA / "studyforrest-oneback" / "sub-02_task-oneback_run-1_bold.nii.gz", None),
}
VOLUMES = (50, 75, 100, 150, 250, 400, 600)
WIDTHS = (0, 1, 2, 3)

Setting = namedtuple("Setting", "volumes sources width noise seed")


def settings(repeats):
    """Every number of volumes with every smoothness; sources (5 to 40, at most 0.4 per volume) and noise are drawn."""
    chosen = []
    for repeat, volumes, width in itertools.product(range(repeats), VOLUMES, WIDTHS):
        seed = 1 + len(chosen)
        random = numpy.random.default_rng([repeat, volumes, width])
        sources = int(random.integers(5, min(40, int(0.4 * volumes)) + 1))
        percent = float(numpy.exp(random.uniform(numpy.log(0.5), numpy.log(4.0))))
        chosen.append(Setting(volumes, sources, width, percent, seed))
    return chosen


def smooth_noise(setting):
    """The noise itself is smooth; it has the percentage of the setting after that."""
    return simulate(setting.volumes, setting.sources, setting.width, setting.noise, setting.seed)


def smoothed_scan(setting):
    """Noise that is independent from voxel to voxel, as a scanner's; signal and noise are then smoothed together."""
    scan = simulate(setting.volumes, setting.sources, 0, setting.noise, setting.seed)
    return smoothed(scan, setting.width)


def measured(image, mask):
    """A measured series without noise of its own; the brain is what exceeds a quarter of the bright voxels."""
    import nibabel

    values = numpy.asanyarray(nibabel.load(image).dataobj).astype(numpy.float32).transpose(3, 2, 1, 0)
    if mask:
        inside = numpy.asanyarray(nibabel.load(mask).dataobj).transpose(2, 1, 0) > 0
    else:
        mean = values.mean(axis=0)
        inside = mean > 0.25 * numpy.percentile(mean, 98)
    inside &= values.std(axis=0) > 0
    return Series(values[:, inside], inside, None)


def missing_images():
    return [str(file) for pair in IMAGES.values() for file in pair if file and not Path(file).exists()]
