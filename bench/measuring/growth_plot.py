"""Growth as a figure: one column per growing size, time above, memory below, bounds as dotted lines."""
import matplotlib

matplotlib.use("svg")
matplotlib.rcParams["svg.hashsalt"] = "growth"  # equal figures give equal files
import matplotlib.pyplot as pyplot

from measuring.growth_points import STAGES

COLOURS = ["#0072b2", "#d55e00", "#009e73", "#cc79a7", "#e69f00"]  # distinguishable with colour blindness
UPDATES = 100  # of FastICA, instead of the whole stage: the number that a run needs depends on its sources


def curves():
    """Label, stage and factor of each line."""
    return [(f"{UPDATES} updates", "update", UPDATES) if stage == "fastica" else (stage, stage, 1) for stage in STAGES]


def set_scales(axes, sizes):
    axes.set_xscale("log")
    axes.set_yscale("log")
    axes.set_xticks(sizes, [f"{size // 1000}k" if size >= 10000 else str(size) for size in sizes], fontsize=8)
    axes.minorticks_off()
    axes.grid(color="0.9")


def draw_times(axes, sizes, points):
    for (label, stage, factor), colour in zip(curves(), COLOURS):
        axes.plot(
            sizes, [factor * point.seconds[stage] for point in points], "o-", color=colour, label=label, markersize=3
        )
        axes.plot(sizes, [factor * point.bounds[stage] for point in points], ":", color=colour)
    set_scales(axes, sizes)


def draw_memory(axes, sizes, points):
    axes.plot(sizes, [point.memory / 1e9 for point in points], "o-", color="black", markersize=3, label="peak")
    axes.plot(sizes, [point.memory_bound / 1e9 for point in points], ":", color="black", label="data and Z")
    set_scales(axes, sizes)
    if max(point.memory for point in points) < 10 * min(point.memory for point in points):
        axes.set_yscale("linear")
        axes.set_ylim(bottom=0)


def fixed_sizes(name, size):
    others = [f"{value:,} {field}" for field, value in size._asdict().items() if field != name]
    return ", ".join(others)


def draw_growth(series, file):
    figure, axes = pyplot.subplots(
        2, len(series), figsize=(4 * len(series), 6), sharex="col", gridspec_kw={"height_ratios": [2, 1]}
    )
    for (upper, lower), (name, points) in zip(axes.T, series.items()):
        sizes = [getattr(point.size, name) for point in points]
        draw_times(upper, sizes, points)
        draw_memory(lower, sizes, points)
        upper.set_title(fixed_sizes(name, points[0].size), fontsize=9)
        lower.set_xlabel(name)
    axes[0, 0].set_ylabel("seconds (dotted: bound)")
    axes[1, 0].set_ylabel("GB")
    axes[0, 0].legend(fontsize=7, framealpha=0.7)
    axes[1, 0].legend(fontsize=8)
    figure.tight_layout()
    figure.savefig(file, metadata={"Date": None})
