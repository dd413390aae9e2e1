"""Writes an image for the tests of the page.

    make_image.py KIND FILE    KIND: small (4D), volume (3D), nan (a voxel of a 4D image is NaN), huge (sparse)
"""

import sys

import nibabel
import numpy

kind, file = sys.argv[1:]
if kind == "huge":  # 300 x 300 x 150 voxels x 300 volumes of 16 bits, 8 GB that take no room on the disk
    header = nibabel.Nifti1Header()
    header.set_data_shape((300, 300, 150, 300))
    header.set_data_dtype(numpy.int16)
    header.set_xyzt_units("mm", "sec")
    header["pixdim"][1:5] = (1, 1, 1, 2)
    header["vox_offset"] = 352
    header["magic"] = b"n+1"
    with open(file, "wb") as stream:
        stream.write(header.binaryblock + bytes(4))
        stream.truncate(352 + 300 * 300 * 150 * 300 * 2)
else:
    random = numpy.random.default_rng(1)
    x, y, z = numpy.meshgrid(*(numpy.linspace(-1, 1, n) for n in (16, 18, 12)), indexing="ij")
    brain = (x**2 + y**2 + z**2 < 0.8)[..., None]
    data = brain * (1000 + 50 * random.standard_normal((16, 18, 12, 30)))
    if kind == "volume":
        data = data[..., 0]
    if kind == "nan":
        data[8, 9, 6, 3] = numpy.nan
    image = nibabel.Nifti1Image(data.astype(numpy.float32), numpy.diag([3, 3, 3, 1]))
    image.header.set_xyzt_units("mm", "sec")
    if data.ndim == 4:
        image.header["pixdim"][4] = 2
    nibabel.save(image, file)
