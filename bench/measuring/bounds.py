"""The least time that this machine could need for each stage, from what one core of it can do."""
import numpy

from measuring.process_run import run_process
from measuring.programs import PROGRAMS


def machine_bounds(folder):
    return run_process([PROGRAMS / "machine_bounds"], folder)


def read_seconds(machine, count):
    """Of count bytes, at the rate of a block of that size; between the sizes measured, by interpolation."""
    name = "read_bytes_"
    sizes = [float(key[len(name) : -2]) * 1e6 for key in machine if key.startswith(name)]
    rates = [rate for key, rate in machine.items() if key.startswith(name)]
    return count / numpy.interp(numpy.log(count), numpy.log(sizes), rates)


def product_seconds(machine, size, flops):
    """Of a product that goes once through the data matrix: its operations or the reading, whatever takes longer."""
    return max(flops / machine["product_flops"], read_seconds(machine, 8 * size.voxels * size.volumes))


def stage_bounds(machine, size, counts):
    """Seconds by stage, as engine_run names them, for a run with so many "updates" and "rotations"; "update" is one."""
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
    """Bytes of the data matrix and the whitened data, which the method needs side by side."""
    return 8 * size.voxels * (size.volumes + size.components)
