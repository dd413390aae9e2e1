"""Growth as a table: seconds of every stage and the lower bound of this machine."""
from measuring.growth_points import STAGES
from measuring.markdown import table

HEADER = ["voxels", "volumes", "n", "run s", "bound", *STAGES, "ms per update", "memory GB", "data + Z"]


def short(seconds):
    return f"{seconds:.3f}" if seconds < 1 else f"{seconds:.1f}"


def beside(value, bound):
    return f"{short(value)} / {short(bound)}"


def row(point):
    total = sum(point.seconds[stage] for stage in STAGES)
    bound = sum(point.bounds[stage] for stage in STAGES)
    update = beside(1e3 * point.seconds["update"], 1e3 * point.bounds["update"])
    return [
        f"{point.size.voxels:,}",
        point.size.volumes,
        point.size.components,
        short(total),
        short(bound),
        *[beside(point.seconds[stage], point.bounds[stage]) for stage in STAGES],
        update,
        f"{point.memory / 1e9:.2f}",
        f"{point.memory_bound / 1e9:.2f}",
    ]


def growth_table(points):
    return table(HEADER, [row(point) for point in points])
