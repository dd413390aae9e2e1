#!/usr/bin/python3
"""sklearn_image.py IMAGE MASK COMPONENTS MAPS

What many would write: load the image, keep the voxels of the mask, run scikit-learn's FastICA with its default
(parallel) algorithm and tolerance, write the maps. The spatial mean of each volume is removed, as znica does; the
eigen-decomposition of the covariance suits long matrices.
"""
import sys

import nibabel
import numpy
from sklearn.decomposition import FastICA


def main():
    image = nibabel.load(sys.argv[1])
    mask = numpy.asanyarray(nibabel.load(sys.argv[2]).dataobj) != 0
    data = numpy.asanyarray(image.dataobj)[mask].astype(numpy.float64)
    components = int(sys.argv[3])
    ica = FastICA(
        n_components=components,
        algorithm="parallel",
        whiten="unit-variance",
        whiten_solver="eigh",
        max_iter=500,
        random_state=1,
    )
    sources = ica.fit_transform(data - data.mean(axis=0))
    maps = numpy.zeros((*mask.shape, components), numpy.float32)
    maps[mask] = sources
    nibabel.save(nibabel.Nifti1Image(maps, image.affine), sys.argv[4])


main()
