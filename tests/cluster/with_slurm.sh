# shellcheck shell=bash
# Sourced by the tests that need a real Slurm, which set before: `znica`, `here` (this folder), `needed` (what else must
# be installed) and `show_failure`, called when the test fails. Goes to the new folder `work`, removed at the end. Ends
# with 77 (skipped) and the reason where Slurm is missing or cannot be started, except in CI.
# shellcheck disable=SC2154,SC2034 # those that are set before, and those that are used after
workflow=$(realpath "$here/../../workflow")

skip() {
    echo "skipped: $1"
    [ -z "${CI:-}" ] || exit 1
    exit 77
}
fail() {
    echo "FAILED: $1"
    exit 1
}

for program in slurmctld slurmd munged sbatch "${needed[@]}"; do
    [ -n "$(PATH=$PATH:/usr/sbin type -P "$program")" ] || skip "$program is not installed (slurm-wlm, munge, snakemake)"
done
[ "$(id -u)" -eq 0 ] || skip "only root can start Slurm's daemons"

export PATH=$PATH:/usr/sbin USER=${USER:-root}
unset SLURM_JOB_ID
work=$(mktemp -d)
finish() {
    status=$?
    "$here/slurm_here.sh" stop "$work/slurm"
    if [ $status -ne 0 ]; then show_failure; fi
    rm -rf "$work"
    exit $status
}
trap finish EXIT
cd "$work" || exit

start_slurm() {
    "$here/slurm_here.sh" start "$work/slurm" || skip "Slurm does not start on this machine"
    export SLURM_CONF=$work/slurm/slurm.conf
}
