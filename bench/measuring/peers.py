"""The engine and its peers: how to run each on the same data, and which packages it needs."""
from collections import namedtuple

from measuring.programs import BENCH, PROGRAMS

Peer = namedtuple("Peer", "title packages command")

ENGINE = Peer("engine", [], [PROGRAMS / "engine_run"])

PEERS = {
    "sklearn": Peer(
        "scikit-learn", ["python3-sklearn", "python3-numpy"], ["/usr/bin/python3", BENCH / "peers" / "sklearn_run.py"]
    ),
    "itpp": Peer("IT++", ["libitpp-dev"], [PROGRAMS / "itpp_run"]),
    "r-fastica": Peer("R fastICA", ["r-base-core", "r-cran-fastica"], ["Rscript", BENCH / "peers" / "r_fastica_run.R"]),
}


def command_of(peer, size, seed, folder, maps):
    sizes = [size.voxels, size.volumes, size.components, seed]
    return [*peer.command, *sizes, folder / "data.f64", maps]
