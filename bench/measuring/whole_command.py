"""The whole znica command on an image beside the plug-in's own stages in it."""
import json
import resource
import subprocess
import tempfile
import time
from pathlib import Path

from measuring.process_run import environment
from measuring.programs import BUILD
from measuring.ratio import ratio_of_pairs

ZNICA = BUILD / "bin" / "znica"
COMPONENTS = 30
RUNS = 3


def processor_seconds():
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


def run_command(image, mask, folder):
    """Seconds of the whole command, its processor seconds, and what its own record says."""
    command = [ZNICA, "run", image.resolve(), "--out", folder / "result", "--components", COMPONENTS]
    if mask:
        command += ["--mask", mask.resolve()]
    start, start_processor = time.perf_counter(), processor_seconds()
    done = subprocess.run([str(part) for part in command], capture_output=True, text=True, env=environment())
    seconds, processor = time.perf_counter() - start, processor_seconds() - start_processor
    if done.returncode != 0:
        raise SystemExit(f"znica failed with status {done.returncode}:\n{done.stderr}")
    record = next((folder / "result").glob("*_decomposition.json"))
    return seconds, processor, json.loads(record.read_text())["ElapsedSeconds"]


def whole_command_ratio(image, mask):
    """None without the command. The record holds no processor time of the plug-in; its wall time stands for it."""
    if not ZNICA.exists():
        return None
    whole, stages = [], []
    for _ in range(RUNS):
        with tempfile.TemporaryDirectory() as folder:
            seconds, processor, elapsed = run_command(image, mask, Path(folder))
        print(f"znica: {seconds:.2f} s, reading {elapsed['Reading']:.2f} s, plug-in {elapsed['Plugin']:.2f} s")
        whole.append((seconds, processor))
        stages.append((elapsed["Plugin"], elapsed["Plugin"]))
    return ratio_of_pairs(whole, stages)
