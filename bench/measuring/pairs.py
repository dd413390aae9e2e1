"""Interleaved whole runs: in every round the engine and each peer once, the order reversed every other round."""
import subprocess

from measuring.peers import ENGINE, PEERS, command_of
from measuring.process_run import TooLong, run_process
from measuring.programs import PROGRAMS
from measuring.recovery import best_correlations
from measuring.sizes import DATA_SEED

SLOW = 60  # seconds


def write_data(size, folder):
    command = [PROGRAMS / "write_simulated_run", *size, DATA_SEED, folder]
    subprocess.run([str(part) for part in command], check=True)


def run_once(peer, size, seed, folder, limit):
    maps = folder / "maps.f32"
    result = run_process(command_of(peer, size, seed, folder, maps), folder, limit)
    result["recovery"] = best_correlations(folder / "sources.f32", maps, size.voxels)
    return result


def takes_part(name, results, number):
    """A slow program runs in the first round only: its ratio is clear enough."""
    done = results[name]
    return name == "engine" or number == 1 or (done and done[0]["seconds"] < SLOW)


def run_rounds(size, names, rounds, folder, limit):
    """Results by name, including "engine", one per round. A peer that exceeds the limit is left out."""
    peers = {"engine": ENGINE, **{name: PEERS[name] for name in names}}
    results = {name: [] for name in peers}
    for number in range(1, rounds + 1):
        order = list(peers) if number % 2 else list(reversed(peers))
        for name in order:
            if not takes_part(name, results, number):
                continue
            try:
                results[name].append(run_once(peers[name], size, number, folder, None if name == "engine" else limit))
            except TooLong:
                print(f"{peers[name].title} left out: more than {limit:.0f} s")
    return {name: runs for name, runs in results.items() if runs}
