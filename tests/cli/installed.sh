#!/bin/sh
# installed.sh CMAKE BUILD: installs into a temporary folder and runs the command from there.
set -eu
cmake=$1
build=$2
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT

"$cmake" --install "$build" --prefix "$prefix" >/dev/null
cd "$prefix"
bin/znica info | grep -qx "file: $(pwd -P)/lib/znica/ICAPlugin.so" || { bin/znica info; exit 1; }
bin/znica simulate --size tiny --out sample >/dev/null
bin/znica run sample/sub-sim_task-blocks_bold.nii.gz --components 3 --seed 1 --out result >/dev/null
for file in share/man/man1/znica.1 share/man/man1/znica-run.1 share/bash-completion/completions/znica result/report.html; do
    [ -s "$file" ] || { echo "$file is missing"; exit 1; }
done
