#!/bin/bash
# A group analysis as jobs of Slurm, each step after the one that it needs:
#
#   znica bids DATASET RESULTS group --ica 20 --list > runs.tsv
#   workflow/group.sh runs.tsv RESULTS/group BATCHES --components 20
#
# The runs are reduced in BATCHES jobs and regressed in one job each. The options that follow are those of the step ica.
# Those of the step plan are taken from ZNICA_PLAN, such as "--smooth 6", those of every sbatch from ZNICA_SBATCH, such
# as "--mem=4G --time=60". Prints the number of the last job. Submitting everything again repeats only what is missing.
set -euo pipefail
table=$1 study=$2 batches=$3
shift 3
znica=${ZNICA:-znica}
read -ra plan <<<"${ZNICA_PLAN:-}"
read -ra sbatch <<<"${ZNICA_SBATCH:-}"
runs=$(($(wc -l <"$table") - 1))
[ "$runs" -ge 2 ] || { echo "$table lists fewer than two runs." >&2; exit 2; }
[ "$(head -n 1 "$table" | cut -f 1)" = name ] || { echo "the first column of $table must be name." >&2; exit 2; }

# submit AFTER NAME SBATCH_OPTION... -- COMMAND: prints the number of the job.
submit() {
    local after=$1 options=(--parsable --kill-on-invalid-dep=yes --job-name="znica-$2" --output=/dev/null)
    shift 2
    if [ -n "$after" ]; then options+=("--dependency=afterok:$after"); fi
    while [ "$1" != -- ]; do
        options+=("$1")
        shift
    done
    shift
    sbatch "${options[@]}" "${sbatch[@]}" --wrap "$*" | cut -d ';' -f 1
}
quoted=$(printf '%q ' "$study")
group=$(printf '%q group' "$znica")
# The task's line of the table begins with the name of its run.
name="\"\$(sed -n \"\$((SLURM_ARRAY_TASK_ID + 1))p\" $(printf '%q' "$table") | cut -f 1)\""

job=$(submit "" plan -- "$group plan $quoted --quiet --runs $(printf '%q ' "$table" "${plan[@]}")")
batch="\$SLURM_ARRAY_TASK_ID/$batches"
job=$(submit "$job" reduce --array="1-$batches" -- "$group reduce $quoted --quiet --batch $batch")
job=$(submit "$job" merge -- "$group merge $quoted --quiet")
ica=$([ $# -eq 0 ] || printf '%q ' "$@")
# Status 4, fewer components than requested, is a result, too.
job=$(submit "$job" ica -- "$group ica $quoted --quiet $ica; case \$? in 0|4) ;; *) exit 1 ;; esac")
job=$(submit "$job" back --array="1-$runs" -- "$group back $quoted --quiet --only $name")
submit "$job" report -- "$group report $quoted --quiet"
