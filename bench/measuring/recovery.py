"""How well the known sources were recovered."""
import numpy


def standardised(rows):
    rows = rows.astype(numpy.float64)
    rows -= rows.mean(axis=1, keepdims=True)
    return rows / numpy.linalg.norm(rows, axis=1, keepdims=True)


def best_correlations(sources_file, maps_file, voxels):
    """For every source, the largest |r| with any map."""
    sources = numpy.fromfile(sources_file, numpy.float32).reshape(-1, voxels)
    maps = numpy.fromfile(maps_file, numpy.float32).reshape(-1, voxels)
    return numpy.abs(standardised(sources) @ standardised(maps).T).max(axis=1)
