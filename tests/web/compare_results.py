"""Compares two results of the same run. Prints, as JSON, the smallest |r| between maps of the same number, and for each
table the largest difference in a column, as a share of the column's largest value. The entropies stand by themselves:
they are of histograms, where a value at the border of two bins falls into one or the other by its last digit.

    compare_results.py A B
"""

import csv
import glob
import json
import sys

import nibabel
import numpy


def maps(folder):
    image = nibabel.load(glob.glob(folder + "/*_desc-ICA_components.nii.gz")[0])
    return image.get_fdata().reshape(-1, image.shape[3])


def columns(folder, table):
    with open(glob.glob(f"{folder}/*_desc-ICA_{table}.tsv")[0]) as file:
        rows = list(csv.reader(file, delimiter="\t"))
    return dict(zip(rows[0], zip(*rows[1:])))


def difference(a, b):
    try:
        x, y = (numpy.array([float("nan") if cell == "n/a" else float(cell) for cell in c]) for c in (a, b))
    except ValueError:
        return 0.0 if a == b else float("inf")
    if not numpy.array_equal(numpy.isnan(x), numpy.isnan(y)):
        return float("inf")
    largest = numpy.nanmax(numpy.abs(x), initial=0.0)
    return float(numpy.nanmax(numpy.abs(x - y), initial=0.0) / (largest or 1.0))


first, second = maps(sys.argv[1]), maps(sys.argv[2])
assert first.shape == second.shape, (first.shape, second.shape)
correlations = [abs(numpy.corrcoef(first[:, i], second[:, i])[0, 1]) for i in range(first.shape[1])]
tables = {"entropies": 0.0}
for table in ("metrics", "mixing", "timeseries"):
    a, b = (columns(folder, table) for folder in sys.argv[1:3])
    assert list(a) == list(b), (list(a), list(b))
    tables[table] = 0.0
    for name in a:
        kind = "entropies" if name.endswith("_entropy") else table
        tables[kind] = max(tables[kind], difference(a[name], b[name]))
print(json.dumps({"components": len(correlations), "smallest_r": min(correlations), "tables": tables}))
