#!/bin/bash
# A group analysis as jobs of a real Slurm on this machine: the files are those of the same analysis in one process,
# also when a job is killed and everything is submitted again.
#
#   group.sh ZNICA
#
# Ends with 77 (skipped) and the reason where Slurm is missing or cannot be started, except in CI.
set -euo pipefail
znica=$(realpath "$1")
here=$(realpath "$(dirname "$0")")
needed=()
show_failure() { [ ! -f "$work/slurm/jobs.txt" ] || cut -d ' ' -f 1-5 "$work/slurm/jobs.txt"; }
# shellcheck source=tests/cluster/with_slurm.sh
. "$here/with_slurm.sh"

# Submits everything and waits until no job is left.
jobs_into() {
    "$workflow/group.sh" "$work/$1.tsv" "$work/$1/group" 3 --components 4 --repeats 2 >"$1.job"
    for _ in $(seq 240); do
        [ -n "$(squeue --noheader)" ] || return 0
        sleep 0.5
    done
    fail "the jobs into $1 did not end"
}
# Everything but records of times and memory.
expect_same() {
    local file
    (cd local && find . \( -name '*.nii.gz' -o -name '*.tsv' \) -not -path '*/ica/*') >files.txt
    [ "$(wc -l <files.txt)" -eq $((6 + 4 * 4)) ] || fail "there are $(wc -l <files.txt) files instead of 22"
    while read -r file; do
        cmp "local/$file" "$1/$file" || fail "$1/$file differs from the one computed in one process"
    done <files.txt
}

"$znica" simulate --subjects 4 --size tiny --sources 4 --out data >/dev/null
for out in jobs killed; do "$znica" bids data $out group --ica 4 --list >$out.tsv; done

start_slurm
export ZNICA=$znica ZNICA_SBATCH="--mem=300M --time=10"

echo "plan, three batches, merge, ica, four runs and report as jobs"
jobs_into jobs

# The same batches in one process after another; they change the last digits.
mkdir local
sed "s,$work/jobs/,$work/local/," jobs.tsv >local.tsv
step() { "$znica" group "$1" local/group --quiet "${@:2}"; }
step plan --runs local.tsv
for batch in 1 2 3; do step reduce --batch $batch/3; done
step merge
step ica --components 4 --repeats 2
step back
step report
expect_same jobs

echo "a batch and a run are killed, then everything is submitted again"
cat >dying <<END
#!/bin/bash
# Kills znica in the second batch and in the third run, once each, while its hidden folder is there. It runs in slices of
# milliseconds and is stopped in between, so that a fast one does not end unseen.
case "\$*" in
*reduce*2/3*) mark=$work/reduce ;;
*back*sub-03*) mark=$work/back ;;
*) exec $znica "\$@" ;;
esac
[ ! -e "\$mark" ] || exec $znica "\$@"
$znica "\$@" &
while kill -STOP \$!; do
    if [ -n "\$(find $work/killed -type d -name ".*.unfinished-*-\$!-*")" ]; then
        touch "\$mark"
        kill -KILL \$!
        exit 137
    fi
    kill -CONT \$!
    sleep 0.001
done
echo "znica ended before its hidden folder was seen"
exit 1
END
chmod +x dying
export ZNICA=$work/dying
jobs_into killed
[ -e reduce ] || fail "no batch was killed"
[ ! -e killed/group/reduction/group.json ] || fail "merged although a batch is missing"
jobs_into killed
[ -e back ] || fail "no run was killed"
[ ! -e killed/group/desc-groupICA_netmats.json ] || fail "the tables were written although a run is missing"
finished() { stat -c %Y.%i killed/group/reduction/group.rows killed/sub-01/func/*.tsv; }
before=$(finished)
jobs_into killed
expect_same killed
[ "$before" = "$(finished)" ] || fail "finished steps were repeated"

echo "jobs and how they ended:"
grep -o 'JobState=[A-Z_]*' slurm/jobs.txt | sort | uniq -c
