#!/bin/sh
# The plug-in finds its host by the name of the running program, whichever way that program was started.
#
#   started_names.sh HOST_TEST      the scripted host as a program named TesmiraZN
set -eu
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# $1: how it was started; the rest: the command.
expect_found() {
    how=$1
    shift
    said=$("$@" --gtest_filter='InitPlugin.*' 2>&1) || {
        echo "The host was not found when started $how:"
        echo "$said"
        exit 1
    }
}

cp "$1" "$folder/program"
ln -s program "$folder/TesmiraZN"
expect_found "through a link" "$folder/TesmiraZN"
rm "$folder/TesmiraZN"

cp "$1" "$folder/TesmiraZN"
loader=$(readelf -l "$1" | sed -n 's/.*interpreter: \(.*\)\]/\1/p')
expect_found "by an explicit loader" "$loader" "$folder/TesmiraZN"

exec 3<"$folder/TesmiraZN"
rm "$folder/TesmiraZN"
expect_found "and its file removed since" /proc/self/fd/3

if "$folder/program" --gtest_filter='InitPlugin.*' >/dev/null 2>&1; then
    echo "A program of another name was taken for the host."
    exit 1
fi
