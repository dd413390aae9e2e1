#!/bin/sh
# The same build packed twice at different times gives the same bytes.
#
#   same_bytes.sh CPACK BUILD_FOLDER SCRATCH_FOLDER
set -eu
umask 022
scratch=$3
rm -rf "$scratch"
cd "$2"
export SOURCE_DATE_EPOCH=1700000000
for time in first second; do
    "$1" -B "$scratch/$time" >/dev/null 2>&1
    find share -name '*.html' -exec touch {} +
done
for package in "$scratch"/first/znica*; do
    sha256sum "$package"
    cmp "$package" "$scratch/second/${package##*/}"
done
