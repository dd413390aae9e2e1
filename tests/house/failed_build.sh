#!/bin/sh
# ./run with a failing compiler: the user must see the compiler's output and that the build failed.
#
#   failed_build.sh SOURCE_ROOT
set -u
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
mkdir -p "$place/scripts" "$place/bin"
cp "$1/run" "$place/run"
printf 'need_packages() { :; }\nnode_packages() { :; }\nBUILD_PACKAGES=\n' >"$place/scripts/packages.sh"
# shellcheck disable=SC2016 # $1 is the argument of the fake cmake
printf '#!/bin/sh\n[ "$1" != --build ] || { echo "a.cpp:1: error: no such thing"; exit 1; }\n' >"$place/bin/cmake"
chmod +x "$place/bin/cmake"

said=$(PATH="$place/bin:$PATH" sh "$place/run" 2>&1) && { echo "run succeeded without a build"; exit 1; }
for words in "Building znica" "a.cpp:1: error: no such thing" "the build failed"; do
    case $said in
    *"$words"*) ;;
    *) echo "run does not say \"$words\":"; echo "$said"; exit 1 ;;
    esac
done
