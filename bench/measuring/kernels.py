"""Google Benchmark programs: randomly interleaved repetitions as (wall, processor) times."""
import json
import subprocess

from measuring.process_run import environment
from measuring.programs import PROGRAMS


def run_kernels(program, pattern, repetitions):
    """Repetitions by benchmark name, each as the dictionary that Google Benchmark writes."""
    command = [
        PROGRAMS / program,
        f"--benchmark_filter={pattern}",
        f"--benchmark_repetitions={repetitions}",
        "--benchmark_enable_random_interleaving=true",
        "--benchmark_format=json",
    ]
    done = subprocess.run([str(part) for part in command], capture_output=True, text=True, env=environment())
    if done.returncode != 0:
        raise SystemExit(f"{program} failed:\n{done.stderr}")
    runs = {}
    for run in json.loads(done.stdout)["benchmarks"]:
        if run.get("error_occurred"):
            raise SystemExit(f"{program}: {run['error_message']}")
        if run["run_type"] == "iteration":
            runs.setdefault(run["run_name"], []).append(run)
    return runs


def kernel_times(runs):
    return [(run["real_time"], run["cpu_time"]) for run in runs]
