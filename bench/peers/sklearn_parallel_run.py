#!/usr/bin/python3
"""sklearn_parallel_run.py VOXELS VOLUMES COMPONENTS SEED DATA MAPS

scikit-learn's FastICA in its parallel (symmetric) form on the data of symmetric_run, with its own log-cosh, which is
faster here than a tanh over whole arrays, and the eigen-decomposition of the covariance. Its test 1 - |w . w_old| < tol
is the engine's |w - w_old| < epsilon for tol = epsilon^2 / 2. Afterwards, the separation is timed alone, on data that
are white already.
"""
import json
import sys
import time

import numpy
from sklearn.decomposition import FastICA

EPSILON = 1e-4
LIMITS = {"algorithm": "parallel", "fun": "logcosh", "max_iter": 1000, "tol": EPSILON**2 / 2}


def timed(work):
    start, start_processor = time.perf_counter(), time.process_time()
    result = work()
    return result, time.perf_counter() - start, time.process_time() - start_processor


def whitened(data, components):
    values, vectors = numpy.linalg.eigh(data.T @ data / len(data))
    return data @ (vectors[:, -components:] / numpy.sqrt(values[-components:]))


def main():
    voxels, volumes, components, seed = map(int, sys.argv[1:5])
    data = numpy.fromfile(sys.argv[5]).reshape(voxels, volumes)
    ica = FastICA(n_components=components, whiten="unit-variance", whiten_solver="eigh", random_state=seed, **LIMITS)
    maps, seconds, processor = timed(lambda: ica.fit_transform(data))
    maps.T.astype(numpy.float32).tofile(sys.argv[6])
    white = whitened(data, components)
    alone = FastICA(whiten=False, random_state=seed, **LIMITS)
    _, alone_seconds, alone_processor = timed(lambda: alone.fit(white))
    result = {
        "seconds": seconds,
        "processor_seconds": processor,
        "separation_seconds": alone_seconds,
        "separation_processor_seconds": alone_processor,
        "iterations": ica.n_iter_,
        "found": maps.shape[1],
    }
    print(json.dumps(result))


main()
