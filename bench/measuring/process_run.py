"""One measured process: it has a single BLAS thread unless it asks for more, and its last line is the result."""
import json
import os
import re
import subprocess
import threading
import time

THREADS = ["OPENBLAS_NUM_THREADS", "OMP_NUM_THREADS", "MKL_NUM_THREADS"]
FINISHED_COMPONENT = re.compile(r"Component \d+ needed (\d+) iterations")


class TooLong(Exception):
    """The process exceeded its time limit and was killed."""


def environment(threads=1):
    return {**os.environ, **{name: str(threads) for name in THREADS}}


def stamped_lines(command, folder, limit, threads):
    """Lines of standard output, each with its arrival time."""
    process = subprocess.Popen(
        [str(part) for part in command],
        cwd=folder,
        env=environment(threads),
        text=True,
        stdout=subprocess.PIPE,
        stderr=subprocess.PIPE,
    )
    alarm = threading.Timer(limit or threading.TIMEOUT_MAX, process.kill)
    alarm.start()
    try:
        lines = [(time.perf_counter(), line.strip()) for line in process.stdout]
        error = process.stderr.read()
        process.wait()
    finally:
        ran_out = not alarm.is_alive()
        alarm.cancel()
        process.kill()
        process.wait()
    if ran_out:
        raise TooLong()
    if process.returncode != 0:
        raise SystemExit(f"{command[0]} failed with status {process.returncode}:\n{error}")
    return [line for line in lines if line[1]]


def updates_from_lines(lines):
    """For a program that reports each finished component: all updates; number and seconds of those after the first."""
    ends = [(stamp, int(match.group(1))) for stamp, text in lines if (match := FINISHED_COMPONENT.match(text))]
    if len(ends) < 2:
        return {}
    return {
        "updates": sum(count for _, count in ends),
        "timed_updates": sum(count for _, count in ends[1:]),
        "timed_seconds": ends[-1][0] - ends[0][0],
    }


def run_process(command, folder, limit=None, threads=1):
    """Runs a measuring program; returns what it reports as a dictionary."""
    lines = stamped_lines(command, folder, limit, threads)
    result = json.loads(lines[-1][1])
    result.update(updates_from_lines(lines[:-1]))
    if "seconds_of_updates_but_last" in result:
        result["timed_updates"] = result["updates"] - 1
        result["timed_seconds"] = result.pop("seconds_of_updates_but_last")
    return result
