"""Ratios of interleaved measurements."""
from collections import namedtuple
from statistics import median

# wall: median ratio of wall-clock times; low, high: its range; processor: median ratio of processor times, or None.
Ratio = namedtuple("Ratio", "wall low high processor")


def ratio_of_pairs(ours, theirs):
    """ours, theirs: one (wall, processor) pair per round, in any unit."""
    wall = [a[0] / b[0] for a, b in zip(ours, theirs)]
    processor = [a[1] / b[1] for a, b in zip(ours, theirs)]
    return Ratio(median(wall), min(wall), max(wall), median(processor))


def cells(ratio):
    processor = "" if ratio.processor is None else f"{ratio.processor:.3f}"
    return [f"{ratio.wall:.3f}", f"{ratio.low:.3f} .. {ratio.high:.3f}", processor]
