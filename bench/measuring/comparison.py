"""The table of whole runs at one size."""
from statistics import median

from measuring.markdown import table
from measuring.peers import ENGINE, PEERS
from measuring.ratio import cells, ratio_of_pairs

HEADER = ["", "seconds", "processor s", "engine / it", "lowest .. highest", "processor", "updates a component",
          "ms an update", "MB beyond the data", "sources: median r", "worst r"]


def times(results):
    return [(result["seconds"], result["processor_seconds"]) for result in results]


def milliseconds_per_update(result):
    return 1e3 * result["timed_seconds"] / result["timed_updates"]


def row(name, results, engine):
    title = ENGINE.title if name == "engine" else PEERS[name].title
    ratio = ["", "", ""] if name == "engine" else cells(ratio_of_pairs(times(engine), times(results)))
    return [title,
            f"{median(r['seconds'] for r in results):.3f}",
            f"{median(r['processor_seconds'] for r in results):.3f}",
            *ratio,
            f"{median(r['updates'] / r['found'] for r in results):.1f}",
            f"{median(map(milliseconds_per_update, results)):.3f}",
            f"{median(r['bytes_beyond_data'] for r in results) / 1e6:.0f}",
            f"{median(median(r['recovery']) for r in results):.3f}",
            f"{median(min(r['recovery']) for r in results):.3f}"]


def comparison_table(results):
    return table(HEADER, [row(name, results[name], results["engine"]) for name in results])
