"""Lower bounds on the time of each stage, from what one core of this machine can do."""
import numpy

from measuring.process_run import run_process
from measuring.programs import PROGRAMS


def machine_bounds(folder):
    return run_process([PROGRAMS / "machine_bounds"], folder)


def read_seconds(machine, count):
    """Seconds to read count bytes at the rate measured for blocks of that size, interpolated between sizes."""
    name = "read_bytes_"
    sizes = [float(key[len(name) : -2]) * 1e6 for key in machine if key.startswith(name)]
    rates = [rate for key, rate in machine.items() if key.startswith(name)]
    return count / numpy.interp(numpy.log(count), numpy.log(sizes), rates)


def product_seconds(machine, size, flops):
    """Seconds of a product that reads the data matrix once: arithmetic or reading, whichever takes longer."""
    return max(flops / machine["product_flops"], read_seconds(machine, 8 * size.voxels * size.volumes))


def stage_bounds(machine, size, counts):
    """Seconds by stage, named as by engine_run; counts holds "updates" and "rotations". "update" is a single one."""
    voxels, volumes, n = size
    projection = product_seconds(machine, size, 2 * voxels * volumes * n)
    update = 2 * read_seconds(machine, 8 * voxels * n)
    return {
        "covariance": product_seconds(machine, size, voxels * volumes * (volumes + 1)),
        "eigen": 2 * volumes * counts["rotations"] / machine["rotated_pairs"],
        "whitening": projection,
        "update": update,
        "fastica": update * counts["updates"],
        "maps": projection,
    }


def memory_bound(size):
    """Bytes of the data matrix and the whitened data, which the method needs at the same time."""
    return 8 * size.voxels * (size.volumes + size.components)
