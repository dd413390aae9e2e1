"""The simulated runs of the comparison: voxels, volumes, components; as many sources as components."""
from collections import namedtuple

Size = namedtuple("Size", "voxels volumes components")

SIZES = {
    "S": Size(5000, 100, 15),
    "M": Size(60000, 200, 30),
    "L": Size(200000, 400, 40),
}
DATA_SEED = 1
