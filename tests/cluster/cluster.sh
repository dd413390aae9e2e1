#!/bin/bash
# A study on a real Slurm on this machine, from the dataset to the page: through Snakemake's own support for Slurm,
# through sbatch, and as a job array. One image is truncated and later repaired, and one job is killed for its memory.
#
#   cluster.sh ZNICA
#
# Ends with 77 (skipped) and the reason where Slurm or Snakemake is missing or cannot be started, except in CI.
set -euo pipefail
znica=$(realpath "$1")
here=$(realpath "$(dirname "$0")")
needed=(snakemake)
show_failure() { find "$work" -maxdepth 1 -name '*.log' -exec tail -n 30 {} +; }
# shellcheck source=tests/cluster/with_slurm.sh
. "$here/with_slurm.sh"

# $1: results; $2: the statuses of their runs
expect_statuses() {
    local found
    found=$(cut -f 6 "$1/runs.tsv" | tail -n +2 | paste -sd " " -)
    [ "$found" = "$2" ] || fail "$1 has the statuses $found instead of $2"
}
# $1: results; $2: profile; the rest: further configuration. The whole output goes to $1.log.
flow() {
    local out=$1 profile=$2
    shift 2
    snakemake --snakefile "$workflow/Snakefile" --profile "$workflow/profiles/$profile" --directory "$work/flow-$out" \
        --config znica="$znica" bids="$work/data" out="$work/$out" options="--components 5 --seed 1 $options" "$@" \
        --default-resources slurm_partition=work mem_mb=1000 runtime=10 >"$out.log" 2>&1 || fail "snakemake into $out"
}
options=""

for i in 1 2 3; do
    mkdir -p "data/sub-0$i/func"
    "$znica" simulate --size tiny --seed "$i" --out "sample$i" >/dev/null
    cp "sample$i/sub-sim_task-blocks_bold.nii.gz" "data/sub-0$i/func/sub-0${i}_task-blocks_bold.nii.gz"
done
broken=data/sub-03/func/sub-03_task-blocks_bold.nii.gz
head -c 20000 "$broken" >half.gz && mv half.gz "$broken"
status=0
"$znica" bids data local participant --components 5 --seed 1 --quiet || status=$?
[ $status -eq 3 ] || fail "the damaged image led to the status $status instead of 3"

start_slurm

echo "three runs, one of them damaged, through Snakemake's own support for Slurm"
flow own slurm
expect_statuses own "0 0 3"
for i in 1 2; do
    maps=sub-0$i/func/sub-0${i}_task-blocks_desc-ICA_components.nii.gz
    cmp "local/$maps" "own/$maps" || fail "the maps differ from those computed without Slurm"
done

echo "the same through sbatch"
flow other sbatch
expect_statuses other "0 0 3"

echo "the repaired image alone is analysed again"
cp sample3/sub-sim_task-blocks_bold.nii.gz "$broken"
before=$(stat -c %Y.%i other/logs/sub-01_task-blocks.json)
flow other sbatch
expect_statuses other "0 0 0"
[ "$(grep -c '^rule analyse' other.log)" -eq 1 ] || fail "more than one run was repeated"
[ "$before" = "$(stat -c %Y.%i other/logs/sub-01_task-blocks.json)" ] || fail "a finished run was touched"

echo "a run with labels is denoised, and no analysis is repeated"
mkdir labels
printf 'component\tclassification\tnote\nICA_01\tnoise\trim\n' >labels/sub-02_task-blocks_desc-ICA_labels.tsv
flow other sbatch labels="$work/labels"
[ "$(grep -c '^rule denoise' other.log)" -eq 1 ] || fail "not exactly one image was denoised"
[ "$(grep -c '^rule analyse' other.log)" -eq 0 ] || fail "an analysis was repeated"
[ -f other/sub-02/func/sub-02_task-blocks_desc-nonaggrDenoised_bold.nii.gz ] || fail "there is no denoised image"
[ "$before" = "$(stat -c %Y.%i other/logs/sub-01_task-blocks.json)" ] || fail "a finished run was touched"

echo "a job that is killed for its memory is tried again with more"
options="--participant-label 02 --repeats 200" # long enough for the memory to be sampled
flow small sbatch memory_extra=20 memory_growth=12
expect_statuses small "0"
[ "$(grep -c '^rule analyse' small.log)" -ge 2 ] || fail "the job was not tried again"
options=""

echo "a job array without Snakemake"
"$znica" bids data array participant --list --seed 1 >list.tsv
ZNICA=$znica sbatch --wait --quiet --mem=200M --array=1-3 "$workflow/array.sbatch" list.tsv data array --seed 1
"$znica" bids data array group >/dev/null
expect_statuses array "0 0 0"

echo "jobs and how they ended:"
grep -o 'JobState=[A-Z_]*' slurm/jobs.txt | sort | uniq -c
grep -i 'memory' slurm/slurmd.log | grep -vi 'real\|cgroup' | tail -n 3
grep -qi 'exceeded.*memory limit' slurm/slurmd.log || fail "no job was killed for its memory"
