#!/bin/sh
# Fuzzes the readers one after another and prints a table: inputs tried, inputs per second, edges of the program's
# control flow that they reached, and findings. A reader stops at its first finding. Needs a built preset asan.
#
#   tests/attack/fuzz_all.sh [RUNS [READER...]]     1000000 inputs for each reader unless given
#
# The inputs that were findings, and what each reader wrote, go to build/fuzz. Status 1 when there are findings.
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
targets=$root/build/asan/tests/attack/fuzz
runs=${1:-1000000}
[ $# -eq 0 ] || shift
if [ $# -eq 0 ]; then
    for folder in "$root"/tests/attack/corpus/*; do
        [ "${folder##*/}" = nested ] || set -- "$@" "${folder##*/}"
    done
fi
mkdir -p "$root/build/fuzz"
cd "$root/build/fuzz"

status=0
printf '%-16s %10s %9s %6s  %s\n' reader inputs per_second edges findings
for reader; do
    findings=none
    if ! "$root/tests/attack/fuzz/fuzz_reader.sh" "$targets/fuzz_$reader" "$reader" "$runs" >"$reader.log" 2>&1; then
        status=1
        findings=$(sed -n 's/.*Test unit written to //p' "$reader.log" | tail -n 1)
        findings=${findings:-see build/fuzz/$reader.log}
    fi
    inputs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$reader.log" | tail -n 1)
    # Whole seconds count, so that short runs have no speed.
    speed=$(sed -n 's/^stat::average_exec_per_sec: *\([1-9]\)/\1/p' "$reader.log" | tail -n 1)
    edges=$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$reader.log" | tail -n 1)
    printf '%-16s %10s %9s %6s  %s\n' "$reader" "${inputs:-0}" "${speed:-n/a}" "${edges:-0}" "$findings"
done
exit $status
