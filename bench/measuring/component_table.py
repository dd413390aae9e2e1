"""Every criterion on every series, and tables of how often each is right."""
import json
import subprocess
import tempfile
from pathlib import Path

import numpy

from measuring import component_criteria as criteria
from measuring.component_runs import IMAGES, VOLUMES, WIDTHS, measured
from measuring.markdown import table
from measuring.programs import PROGRAMS

PROGRAM = PROGRAMS / "estimate_components"
TITLES = {
    "parallel": "parallel analysis (used)",
    "mdl": "MDL, effective samples",
    "laplace": "Laplace, effective samples",
    "threshold": "optimal threshold, effective samples",
    "subsampled": "MDL, subsampled voxels",
    "hard": "optimal threshold, all voxels",
}


def by_the_command(series):
    """The command's own criteria, from the program that calls them."""
    volumes = len(series.values)
    with tempfile.TemporaryDirectory() as folder:
        grid = numpy.zeros((*series.mask.shape, volumes), numpy.float32)
        grid[series.mask] = series.values.T
        grid.tofile(Path(folder) / "series.f32")
        series.mask.astype(numpy.uint8).tofile(Path(folder) / "mask.u8")
        size = [str(n) for n in series.mask.shape[::-1]]
        done = subprocess.run([PROGRAM, folder, *size, str(volumes)], capture_output=True, text=True, check=True)
    return json.loads(done.stdout)


def estimates(series):
    return {
        **by_the_command(series),
        "subsampled": criteria.subsampled(series),
        "hard": criteria.hard_threshold(series),
    }


def simulated_rows(chosen, simulated):
    """One per setting: the estimates, the truth (with the mean image) and the detectable part of it."""
    rows = []
    for setting in chosen:
        series = simulated(setting)
        row = {**setting._asdict(), **estimates(series), "detectable": criteria.detectable(series)}
        row["truth"] = setting.sources + 1
        rows.append(row)
        print(json.dumps(row), flush=True)
    return rows


def is_right(row, name, against):
    return abs(row[name] - row[against]) <= max(3, 0.2 * row[against])


def share(rows, name, against="detectable"):
    return f"{100 * numpy.mean([is_right(row, name, against) for row in rows]):.0f} %" if rows else "n/a"


def columns():
    """Title and condition of every group of runs."""
    groups = [("all", lambda row: True)]
    bounds = [(VOLUMES[0], 75), (100, 150), (250, VOLUMES[-1])]
    groups += [(f"{a} to {b} volumes", lambda row, a=a, b=b: a <= row["volumes"] <= b) for a, b in bounds]
    groups += [
        (f"{width} voxel{'' if width == 1 else 's'}", lambda row, width=width: row["width"] == width)
        for width in WIDTHS
    ]
    return groups


def share_table(rows, against):
    groups = columns()
    lines = []
    for name, title in [*TITLES.items(), ("detectable", "detectable number")]:
        if name != against:
            lines.append([title] + [share([row for row in rows if holds(row)], name, against) for _, holds in groups])
    return table(["criterion"] + [title for title, _ in groups], lines)


def measured_table():
    """The real runs, whole and cut to 50 volumes, as measured and smoothed."""
    lines = []
    for name, files in IMAGES.items():
        whole = measured(*files)
        for width in (0, 2):
            prepared = criteria.smoothed(whole, width)
            for volumes in (len(whole.values), 50):
                found = estimates(prepared._replace(values=prepared.values[:volumes]))
                print(name, width, volumes, json.dumps(found), flush=True)
                used = [f"{found['parallel']}{'' if found['edge'] else ' (no edge)'}"]
                others = [found[key] for key in TITLES if key != "parallel"]
                lines.append([name, volumes, f"{width} voxels" if width else "none", *used, *others])
    return table(["run", "volumes", "smoothing", *TITLES.values()], lines)
