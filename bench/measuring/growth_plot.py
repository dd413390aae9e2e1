"""Growth as a picture: one column for each size that grows, time above, memory below, bounds as dotted lines."""
import matplotlib

matplotlib.use("svg")
matplotlib.rcParams["svg.hashsalt"] = "growth"  # the same drawing, the same file
import matplotlib.pyplot as pyplot

from measuring.growth_points import STAGES

COLOURS = ["#0072b2", "#d55e00", "#009e73", "#cc79a7", "#e69f00"]  # told apart by the colour-blind too


def draw_times(axes, sizes, points):
    for stage, colour in zip(STAGES, COLOURS):
        axes.plot(sizes, [point.seconds[stage] for point in points], "o-", color=colour, label=stage, markersize=3)
        axes.plot(sizes, [point.bounds[stage] for point in points], ":", color=colour)
    axes.set_xscale("log")
    axes.set_yscale("log")


def draw_memory(axes, sizes, points):
    axes.plot(sizes, [point.memory / 1e9 for point in points], "o-", color="black", markersize=3, label="peak")
    axes.plot(sizes, [point.memory_bound / 1e9 for point in points], ":", color="black", label="data and Z")
    axes.set_xscale("log")
    axes.set_yscale("log")


def fixed_sizes(name, size):
    others = [f"{value:,} {field}" for field, value in size._asdict().items() if field != name]
    return ", ".join(others)


def draw_growth(series, file):
    figure, axes = pyplot.subplots(2, len(series), figsize=(4 * len(series), 6), sharex="col",
                                   gridspec_kw={"height_ratios": [2, 1]})
    for (upper, lower), (name, points) in zip(axes.T, series.items()):
        sizes = [getattr(point.size, name) for point in points]
        draw_times(upper, sizes, points)
        draw_memory(lower, sizes, points)
        upper.set_title(fixed_sizes(name, points[0].size), fontsize=9)
        lower.set_xlabel(name)
    axes[0, 0].set_ylabel("seconds (dotted: bound)")
    axes[1, 0].set_ylabel("GB")
    axes[0, 0].legend(fontsize=8)
    axes[1, 0].legend(fontsize=8)
    figure.tight_layout()
    figure.savefig(file, metadata={"Date": None})
