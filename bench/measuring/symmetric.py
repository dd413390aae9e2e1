"""The symmetric estimate and scikit-learn's parallel FastICA, taking turns on the same data."""
from statistics import median

import numpy

from measuring.markdown import table
from measuring.process_run import run_process
from measuring.programs import BENCH, PROGRAMS
from measuring.ratio import cells, ratio_of_pairs
from measuring.recovery import best_correlations, standardised

HEADER = [
    "",
    "threads",
    "seconds",
    "CPU seconds",
    "engine / scikit-learn",
    "lowest .. highest",
    "CPU ratio",
    "separation alone",
    "lowest .. highest",
    "CPU ratio",
    "iterations",
    "sources: median r",
    "worst r",
    "negentropy",
]
NORMAL_LOG_COSH = 0.374567207491438


def negentropy(file, voxels):
    """Sum over the maps of (E ln cosh y - E ln cosh v)^2, v standard normal."""
    size = numpy.abs(standardised(numpy.fromfile(file, numpy.float32).reshape(-1, voxels)) * numpy.sqrt(voxels))
    expectation = (size + numpy.log1p(numpy.exp(-2 * size)) - numpy.log(2)).mean(axis=1)
    return float(((expectation - NORMAL_LOG_COSH) ** 2).sum())


def run_once(program, size, seed, folder, threads):
    maps = folder / "maps.f32"
    arguments = [*size, seed, folder / "data.f64", maps]
    if program == "engine":
        command = [PROGRAMS / "symmetric_run", *arguments, threads]
    else:
        command = ["/usr/bin/python3", BENCH / "peers" / "sklearn_parallel_run.py", *arguments]
    result = run_process(command, folder, threads=threads)
    result["recovery"] = best_correlations(folder / "sources.f32", maps, size.voxels)
    result["negentropy"] = negentropy(maps, size.voxels)
    return result


def run_rounds(size, rounds, folder, threads):
    """Results by program, one per round; the order is reversed every other round."""
    results = {"engine": [], "scikit-learn": []}
    for number in range(1, rounds + 1):
        for program in list(results) if number % 2 else reversed(results):
            results[program].append(run_once(program, size, number, folder, threads))
    return results


def times(results, what=""):
    return [(result[f"{what}seconds"], result[f"{what}processor_seconds"]) for result in results]


def row(program, threads, results):
    ratios = [""] * 6
    if program == "engine":
        ratios = [
            cell
            for what in ("", "separation_")
            for cell in cells(ratio_of_pairs(times(results["engine"], what), times(results["scikit-learn"], what)))
        ]
    runs = results[program]
    return [
        program,
        threads,
        f"{median(r['seconds'] for r in runs):.3f}",
        f"{median(r['processor_seconds'] for r in runs):.3f}",
        *ratios,
        f"{median(r['iterations'] for r in runs):.0f}",
        f"{median(median(r['recovery']) for r in runs):.4f}",
        f"{median(min(r['recovery']) for r in runs):.4f}",
        f"{median(r['negentropy'] for r in runs):.5f}",
    ]


def symmetric_table(by_threads):
    """by_threads: results of run_rounds by number of threads."""
    rows = [row(program, threads, results) for threads, results in by_threads.items() for program in results]
    return table(HEADER, rows)
