# shellcheck shell=sh
# Sourced by ./test and .ci/run: how long each step of a run took.

# The file is shared with the scripts that a script starts; whoever made it removes it.
if [ -z "${STEP_TIMES-}" ]; then
    STEP_TIMES=$(mktemp)
    export STEP_TIMES
    trap 'rm -f "$STEP_TIMES"' EXIT
fi

# step NAME COMMAND...: runs the command and notes how long it took. Returns the command's status.
step() {
    step_name=$1
    shift
    step_start=$(date +%s)
    step_status=0
    "$@" || step_status=$?
    [ $step_status -eq 0 ] || step_name="$step_name: FAILED"
    printf '%6d  %s\n' $(($(date +%s) - step_start)) "$step_name" >>"$STEP_TIMES"
    return $step_status
}

# Prints the steps so far and their sum.
show_steps() {
    echo "Steps so far, in seconds:"
    cat "$STEP_TIMES"
    awk '{ sum += $1 } END { printf "%6d  in all\n", sum }' "$STEP_TIMES"
}
