"""The ratios that this project aims at; both sides of each are measured in turn."""
import tempfile
from statistics import median

from measuring.comparison import ratio_at_its_updates, times
from measuring.kernels import kernel_times, run_kernels
from measuring.markdown import table
from measuring.process_run import run_process
from measuring.programs import PROGRAMS
from measuring.ratio import cells, ratio_of_pairs
from measuring.sizes import DATA_SEED, SIZES
from measuring.whole_command import script_ratio, whole_command_ratio

HEADER = ["quantity", "target", "measured", "lowest .. highest", "CPU ratio", "met"]
SKLEARN = {"S": 0.28, "M": 0.30, "L": 0.32}
UPDATE = {"M": 2.2, "L": 1.6}
JACOBI = {400: 0.25, 800: 0.15, 1200: 0.08}
FINGERPRINT = {0: 0.25, 100: 0.5}
REPETITIONS = {400: 5, 800: 3, 1200: 1}  # the literal form takes minutes at 1200 volumes


def row(what, target, ratio, remark=""):
    return [what, f"<= {target}", *cells(ratio), "yes" if ratio.wall <= target and not remark else "no" + remark]


def sklearn_rows(results):
    rows = []
    for name, by_peer in results.items():
        if "sklearn" not in by_peer:
            continue
        engine, sklearn = by_peer["engine"], by_peer["sklearn"]
        rows.append(row(f"engine / scikit-learn, {name}", SKLEARN[name], ratio_of_pairs(times(engine), times(sklearn))))
        ratio = ratio_at_its_updates(engine, sklearn)._replace(processor=None)
        rows.append(row(f"the same at scikit-learn's number of updates, {name}", SKLEARN[name], ratio))
    return rows


def update_rows():
    rows = []
    for name, target in UPDATE.items():
        arguments = f"{SIZES[name].voxels}/{SIZES[name].components}"
        runs = run_kernels("fixed_point_bench", f"BM_(TanhUpdate|TwoPlainReads)/{arguments}", 9)
        update = kernel_times(runs[f"BM_TanhUpdate/{arguments}"])
        reads = min(
            (kernel_times(runs[f"BM_TwoPlainReads/{arguments}/{streams}"]) for streams in (1, 4)),
            key=lambda repetitions: median(wall for wall, _ in repetitions),
        )
        rows.append(row(f"one tanh update / two plain reads of Z, {name}", target, ratio_of_pairs(update, reads)))
    return rows


def jacobi_rows():
    rows = []
    for volumes, target in JACOBI.items():
        runs = run_kernels("jacobi_bench", f"/{volumes}$", REPETITIONS[volumes])
        ours, literal = runs[f"BM_Jacobi/{volumes}"], runs[f"BM_LiteralJacobi/{volumes}"]
        same = {run["bits"] for run in ours} == {run["bits"] for run in literal}
        rows.append(
            row(
                f"jacobi / literal form, {volumes} volumes",
                target,
                ratio_of_pairs(kernel_times(ours), kernel_times(literal)),
                "" if same else ", bits differ",
            )
        )
    return rows


def labelling_row():
    runs = run_kernels("fingerprint_bench", "/50000$", 5)
    return row(
        "labelling of 50,000 points / literal form",
        0.03,
        ratio_of_pairs(kernel_times(runs["BM_LabelClusters/50000"]), kernel_times(runs["BM_LiteralLabelling/50000"])),
    )


def fingerprint_and_memory_rows():
    size, rows = SIZES["L"], []
    with tempfile.TemporaryDirectory() as folder:
        for regions, target in FINGERPRINT.items():
            command = [PROGRAMS / "engine_run", *size, DATA_SEED, "--regions", regions]
            runs = [run_process(command, folder) for _ in range(3)]
            ratio = ratio_of_pairs([(r["fingerprint"], r["fingerprint_processor"]) for r in runs], times(runs))
            rows.append(row(f"fingerprint, {regions} regions / engine, L", target, ratio))
    data = size.voxels * size.volumes * 8
    peaks = [(1 + run["bytes_beyond_data"] / data,) * 2 for run in runs]
    rows.append(row("peak memory of the engine / data matrix, L", 1.3, ratio_of_pairs(peaks, [(1, 1)] * len(peaks))))
    return rows


def target_table(results, image, mask):
    rows = sklearn_rows(results) + update_rows() + jacobi_rows() + [labelling_row()] + fingerprint_and_memory_rows()
    what = "znica, whole command / plug-in's own stages"
    ratio = whole_command_ratio(image, mask) if image else None
    rows.append(row(what, 1.3, ratio) if ratio else [what, "<= 1.3", "not measured", "", "", ""])
    what = "znica, whole command / script with scikit-learn, two threads"
    ratio = script_ratio(image, mask) if image and mask else None
    rows.append(row(what, 0.35, ratio) if ratio else [what, "<= 0.35", "not measured", "", "", ""])
    return table(HEADER, rows)
