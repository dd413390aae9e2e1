"""The table of whole runs at one size."""
from statistics import median

from measuring.markdown import table
from measuring.peers import ENGINE, PEERS
from measuring.ratio import cells, ratio_of_pairs

HEADER = [
    "",
    "seconds",
    "CPU seconds",
    "engine / peer",
    "lowest .. highest",
    "CPU ratio",
    "at its updates",
    "updates per component",
    "ms per update",
    "MB beyond the data",
    "sources: median r",
    "worst r",
    "runs",
]


def times(results):
    return [(result["seconds"], result["processor_seconds"]) for result in results]


def seconds_per_update(result):
    return result["timed_seconds"] / result["timed_updates"]


def ratio_at_its_updates(engine, results):
    """As if the engine had needed as many updates as the peer: their random start vectors differ."""

    def seconds(ours, theirs):
        return ours["seconds"] + seconds_per_update(ours) * (theirs["updates"] - ours["updates"])

    return ratio_of_pairs([(seconds(a, b), seconds(a, b)) for a, b in zip(engine, results)], times(results))


def row(name, results, engine):
    title = ENGINE.title if name == "engine" else PEERS[name].title
    ratio = [""] * 4
    if name != "engine":
        ratio = [
            *cells(ratio_of_pairs(times(engine), times(results))),
            f"{ratio_at_its_updates(engine, results).wall:.3f}",
        ]
    return [
        title,
        f"{median(r['seconds'] for r in results):.3f}",
        f"{median(r['processor_seconds'] for r in results):.3f}",
        *ratio,
        f"{median(r['updates'] / r['found'] for r in results):.1f}",
        f"{1e3 * median(map(seconds_per_update, results)):.3f}",
        f"{median(r['bytes_beyond_data'] for r in results) / 1e6:.0f}",
        f"{median(median(r['recovery']) for r in results):.3f}",
        f"{median(min(r['recovery']) for r in results):.3f}",
        len(results),
    ]


def comparison_table(results):
    return table(HEADER, [row(name, results[name], results["engine"]) for name in results])
