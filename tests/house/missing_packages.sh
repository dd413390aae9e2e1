#!/bin/sh
# ./run and ./test on a machine without the packages, by a user who may not install them: they must list every package,
# say what to do instead, and end without a build.
#
#   missing_packages.sh SOURCE_ROOT
set -eu
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
mkdir "$place/bin"
for tool in sh cat dirname mktemp rm date awk; do ln -s "$(command -v $tool)" "$place/bin/$tool"; done
printf '#!/bin/sh\necho 1000\n' >"$place/bin/id"
printf '#!/bin/sh\nexit 1\n' >"$place/bin/dpkg-query"
chmod +x "$place/bin/id" "$place/bin/dpkg-query"

# $1: script; the rest: words that it must say
check() {
    script=$1
    shift
    status=0
    said=$(PATH="$place/bin" sh "$script" 2>&1) || status=$?
    [ $status -eq 1 ] || { echo "$script ended with status $status: $said"; exit 1; }
    for words in "$@"; do
        case $said in
        *"$words"*) ;;
        *) echo "$script does not say \"$words\": $said"; exit 1 ;;
        esac
    done
}
check "$1/run" "not Debian" "cmake" "libopenblas-dev" "nodejs npm" "linux-x86_64.tar.gz" "docs/installing.md"
printf '#!/bin/sh\nexit 1\n' >"$place/bin/apt-get"
chmod +x "$place/bin/apt-get"
check "$1/run" "Only root" "apt-get install --no-install-recommends g++ cmake"
check "$1/test" "Only root" "libgtest-dev" "nodejs npm"
