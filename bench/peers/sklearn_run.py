#!/usr/bin/python3
"""sklearn_run.py VOXELS VOLUMES COMPONENTS SEED DATA MAPS

scikit-learn's FastICA in its deflation form on the data of engine_run. It is given a vectorised tanh, because its own
log-cosh goes through the voxels in Python, and the eigen-decomposition of the covariance, which suits long matrices.
Its test 1 - |w . w_old| < tol is the engine's |w - w_old| < epsilon for tol = epsilon^2 / 2.
"""
import json
import sys
import time

import numpy
from sklearn.decomposition import FastICA

EPSILON = 1e-4


def status_bytes(key):
    with open("/proc/self/status") as status:
        for line in status:
            if line.startswith(key + ":"):
                return int(line.split()[1]) * 1024
    return 0


def forget_peak():
    with open("/proc/self/clear_refs", "w") as references:
        references.write("5")


class Tanh:
    """Contrast function that notes when each update calls it."""

    def __init__(self):
        self.calls = []

    def __call__(self, y):
        self.calls.append(time.perf_counter())
        g = numpy.tanh(y)
        return g, 1.0 - g * g


def main():
    voxels, volumes, components, seed = map(int, sys.argv[1:5])
    data = numpy.fromfile(sys.argv[5]).reshape(voxels, volumes)
    tanh = Tanh()
    ica = FastICA(
        n_components=components,
        algorithm="deflation",
        whiten="unit-variance",
        whiten_solver="eigh",
        fun=tanh,
        max_iter=1000,
        tol=EPSILON**2 / 2,
        random_state=seed,
    )
    held = status_bytes("VmRSS")
    forget_peak()
    start, start_processor = time.perf_counter(), time.process_time()
    maps = ica.fit_transform(data)
    seconds, processor = time.perf_counter() - start, time.process_time() - start_processor
    result = {
        "seconds": seconds,
        "processor_seconds": processor,
        "bytes_beyond_data": status_bytes("VmHWM") - held,
        "updates": len(tanh.calls),
        "seconds_of_updates_but_last": tanh.calls[-1] - tanh.calls[0],
        "found": maps.shape[1],
    }
    maps.T.astype(numpy.float32).tofile(sys.argv[6])
    print(json.dumps(result))


main()
