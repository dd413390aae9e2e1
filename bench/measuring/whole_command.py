"""The whole znica command on an image: against the plug-in's own stages in it, and against a script of a few lines."""
import json
import os
import resource
import subprocess
import tempfile
import time
from pathlib import Path

from measuring.process_run import environment
from measuring.programs import BENCH, BUILD
from measuring.ratio import ratio_of_pairs

ZNICA = BUILD / "bin" / "znica"
COMPONENTS = 30
RUNS = 3


def run_command(image, mask, folder):
    """Seconds of the whole command, and the times in its own record."""
    command = [ZNICA, "run", image.resolve(), "--out", folder / "result", "--components", COMPONENTS]
    command += ["--mask", mask.resolve() if mask else "auto"]
    start = time.perf_counter()
    done = subprocess.run([str(part) for part in command], capture_output=True, text=True, env=environment())
    seconds = time.perf_counter() - start
    if done.returncode != 0:
        raise SystemExit(f"znica failed with status {done.returncode}:\n{done.stderr}")
    record = next((folder / "result").glob("*_decomposition.json"))
    return seconds, json.loads(record.read_text())["ElapsedSeconds"]


def whole_command_ratio(image, mask):
    """None without the command. No processor times: the record has none for the plug-in."""
    if not ZNICA.exists():
        return None
    whole, stages = [], []
    for _ in range(RUNS):
        with tempfile.TemporaryDirectory() as folder:
            seconds, elapsed = run_command(image, mask, Path(folder))
        print(f"znica: {seconds:.2f} s, reading {elapsed['Reading']:.2f} s, plug-in {elapsed['Plugin']:.2f} s")
        whole.append((seconds, seconds))
        stages.append((elapsed["Plugin"], elapsed["Plugin"]))
    return ratio_of_pairs(whole, stages)._replace(processor=None)


def timed(command, threads):
    """Wall-clock and processor seconds of a process that may use so many threads."""
    limits = {name: str(threads) for name in ("OPENBLAS_NUM_THREADS", "OMP_NUM_THREADS")}
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    start = time.perf_counter()
    done = subprocess.run([str(part) for part in command], capture_output=True, text=True, env={**os.environ, **limits})
    wall = time.perf_counter() - start
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    if done.returncode != 0:
        raise SystemExit(f"{command[0]} failed with status {done.returncode}:\n{done.stderr}")
    return wall, after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def script_ratio(image, mask, threads=2, rounds=5):
    """The command with the symmetric estimate and its report, over the script, which makes only the maps."""
    ours, theirs = [], []
    for _ in range(rounds):
        with tempfile.TemporaryDirectory() as folder:
            maps = Path(folder) / "maps.nii.gz"
            run = [ZNICA, "run", image, "--mask", mask, "--components", COMPONENTS, "--threads", threads]
            ours.append(timed([*run, "--approach", "symmetric", "--seed", 1, "--out", Path(folder) / "out"], threads))
            theirs.append(timed([BENCH / "peers" / "sklearn_image.py", image, mask, COMPONENTS, maps], threads))
        print(f"znica {ours[-1][0]:.2f} s ({ours[-1][1]:.2f} CPU), script {theirs[-1][0]:.2f} s ({theirs[-1][1]:.2f})")
    return ratio_of_pairs(ours, theirs)
