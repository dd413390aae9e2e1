#!/bin/sh
# No binary looks for libraries in the current folder: a file that lies there with a library's name would run. Every
# entry of a run path must be absolute or relative to the binary; an empty one means the current folder.
#
#   run_paths.sh BUILD_FOLDER
set -u
bad=0
checked=0
files=$(find "$1/bin" "$1/lib" "$1/tests" -type f -size +3k ! -name '*.[oa]')
for file in $files; do
    entries=$(readelf -d "$file" 2>/dev/null | sed -nE 's/.*\((RUNPATH|RPATH)\).*\[(.*)\]/\2/p')
    [ -n "$entries" ] || continue
    checked=$((checked + 1))
    case ":$entries:" in
    *::*) wrong=yes ;;
    *)
        # shellcheck disable=SC2016 # the dynamic linker's word
        wrong=$(printf '%s' "$entries" | tr ':' '\n' | grep -vE '^(/|\$ORIGIN)')
        ;;
    esac
    [ -z "$wrong" ] || { echo "$file searches the current folder: [$entries]"; bad=1; }
done
[ "$checked" -gt 0 ] || { echo "no binary with a run path was found in $1"; bad=1; }
exit $bad
