#!/bin/sh
# Fuzzes one reader: first the inputs of the corpus, then random changes of them.
#
#   fuzz_reader.sh PROGRAM READER [RUNS]
#
# PROGRAM is the reader's fuzz target, built by the preset asan. RUNS is the number of inputs; without it, that of the
# environment variable ZN_FUZZ_RUNS, or else 10000. ZN_FUZZ_SECONDS is a limit on the time, ZN_FUZZ_SEED another seed of
# the random changes. An input that ends the program is kept in the current folder as crash-*, leak-*, oom-* or
# timeout-*.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
program=$1 reader=$2 runs=${3:-${ZN_FUZZ_RUNS:-10000}}
[ -d /dev/shm ] && [ -w /dev/shm ] && TMPDIR=/dev/shm
TMPDIR=$(mktemp -d "${TMPDIR:-/tmp}/znica-fuzz-XXXXXX")
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT
trap 'exit 1' HUP INT TERM # through the line above
# Longer than one input needs, and a third faster than the usual quarantine of freed memory.
export ASAN_OPTIONS="quarantine_size_mb=8:${ASAN_OPTIONS-}"
mkdir "$TMPDIR/new"

"$program" "$here"/../corpus/nested/* # these take too long to be varied
longest=4096
[ "$reader" != plugin_log ] || longest=512 # a few lines; each takes long under the sanitizer
set -- -runs="$runs" -max_total_time="${ZN_FUZZ_SECONDS:-0}" -seed="${ZN_FUZZ_SEED:-1}" -max_len=$longest \
    -timeout=60 -print_final_stats=1
[ ! -f "$here/$reader.dict" ] || set -- "$@" -dict="$here/$reader.dict"
"$program" "$@" "$TMPDIR/new" "$here/../corpus/$reader"
