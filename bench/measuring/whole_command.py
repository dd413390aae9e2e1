"""The whole znica command on an image compared with the plug-in's own stages in it."""
import json
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
