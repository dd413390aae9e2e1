"""Engine runs in which one size grows at a time, each with its bounds."""
from collections import namedtuple

from measuring.bounds import memory_bound, stage_bounds
from measuring.comparison import seconds_per_update
from measuring.process_run import run_process
from measuring.programs import PROGRAMS
from measuring.sizes import DATA_SEED, Size

STAGES = ["covariance", "eigen", "whitening", "fastica", "maps"]
SERIES = {
    "voxels": [Size(voxels, 200, 20) for voxels in (50000, 100000, 200000, 400000, 800000, 1600000, 3200000)],
    "volumes": [Size(50000, volumes, 20) for volumes in (50, 100, 200, 400, 800, 1200)],
    "components": [Size(100000, 200, components) for components in (5, 10, 20, 40, 80)],
}
# What is proportional to the voxels is extrapolated from these sizes to 5,000,000 voxels.
PAPER_FROM = [Size(3200000, 200, 20), Size(400000, 400, 40)]
PAPER_VOXELS = 5000000

# seconds and bounds by stage, and of one "update"; counts: numbers of updates and rotations in the run.
Point = namedtuple("Point", "size seconds bounds memory memory_bound counts")


def available_bytes():
    with open("/proc/meminfo") as info:
        return next(int(line.split()[1]) * 1024 for line in info if line.startswith("MemAvailable"))


def fits(size):
    sources = 4 * size.voxels * size.components
    return 1.1 * (memory_bound(size) + sources) < available_bytes()


def measure(size, machine, folder):
    result = run_process([PROGRAMS / "engine_run", *size, DATA_SEED], folder)
    seconds = {stage: result[stage] for stage in STAGES}
    seconds["update"] = seconds_per_update(result)
    memory = 8 * size.voxels * size.volumes + result["bytes_beyond_data"]
    return Point(
        size,
        seconds,
        stage_bounds(machine, size, result),
        memory,
        memory_bound(size),
        {name: result[name] for name in ("updates", "rotations")},
    )


def on_paper(point, voxels, machine):
    """The same run with more voxels and as many updates: all but the eigen-decomposition grows in proportion."""
    size, factor = point.size._replace(voxels=voxels), voxels / point.size.voxels
    seconds = {stage: value * (1 if stage == "eigen" else factor) for stage, value in point.seconds.items()}
    return Point(
        size,
        seconds,
        stage_bounds(machine, size, point.counts),
        point.memory * factor,
        memory_bound(size),
        point.counts,
    )
