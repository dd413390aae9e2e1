#!/bin/sh
# Packs a build a second time; the bytes must be those of the first. SOURCE_DATE_EPOCH must be the same.
#
#   same_bytes.sh CPACK BUILD_FOLDER FOLDER_OF_PACKAGES
set -eu
again=$3/again
rm -rf "$again"
cd "$2"
find share -name '*.html' -exec touch {} +
"$1" -B "$again" >/dev/null 2>&1
for package in "$3"/znica*; do
    sha256sum "$package"
    cmp "$package" "$again/${package##*/}"
done
