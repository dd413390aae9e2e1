#!/usr/bin/env python3
"""The images that `znica bids --list` finds are those that the validator of BIDS knows as functional images.

    valid_names.py ZNICA
"""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

try:
    from bids_validator import BIDSValidator
except ImportError as error:
    print(f"skipped: {error}; install python3-bids-validator")
    sys.exit(1 if os.environ.get("CI") else 77)

ANALYSED = [
    "sub-01/ses-pre/func/sub-01_ses-pre_task-rest_bold.nii.gz",
    "sub-01/ses-pre/func/sub-01_ses-pre_task-rest_acq-mb_ce-gad_dir-AP_rec-dis_run-02_bold.nii.gz",
    "sub-01/ses-post/func/sub-01_ses-post_task-nback_run-1_part-mag_bold.nii",
    "sub-02/func/sub-02_task-rest_bold.nii.gz",
]
PASSED_OVER = [
    "sub-02/func/sub-02_task-rest_echo-1_bold.nii.gz",
    "sub-02/func/sub-02_task-rest_part-phase_bold.nii.gz",
    "sub-02/func/sub-02_task-rest_sbref.nii.gz",
    "sub-02/func/sub-02_task-rest_cbv.nii.gz",
    "sub-02/func/sub-02_task-rest_events.tsv",
    "sub-02/func/sub-02_task-rest_bold.json",
    "sub-02/anat/sub-02_T1w.nii.gz",
]
NOT_BIDS = [
    "sub-02/func/sub-02_task-rest copy_bold.nii.gz",
    "sub-02/func/sub-02_bold_task-rest.nii.gz",
    "sub-02/func/task-rest_sub-02-_bold.nii.gz",
    "sub-02/rest/sub-02_task-rest_bold.nii.gz",
]

validator = BIDSValidator()
for name in ANALYSED + PASSED_OVER:
    assert validator.is_bids("/" + name), name
for name in NOT_BIDS:
    assert not validator.is_bids("/" + name), name

with tempfile.TemporaryDirectory() as folder:
    for name in ANALYSED + PASSED_OVER + NOT_BIDS:
        file = Path(folder, "data", name)
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(b"")
    command = [sys.argv[1], "bids", Path(folder, "data"), Path(folder, "out"), "participant", "--list"]
    listed = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    images = [line.split("\t")[8] for line in listed.splitlines()[1:]]
    found = sorted(str(Path(image).relative_to(Path(folder, "data"))) for image in images)
    assert found == sorted(ANALYSED), found
print("same images")
