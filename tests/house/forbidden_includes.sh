#!/bin/sh
# include_rules.sh over a small tree: it must name an include that the tables do not allow, and a permission that nothing
# uses, and pass without them.
#
#   forbidden_includes.sh INCLUDE_RULES
set -u
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
cd "$place" || exit 1
mkdir -p docs src/host headless/group/steps headless/study
# shellcheck disable=SC2016 # the backticks are those of the table
printf '| `%s/` | things | %s |\n' src/host '' headless/group '' headless/group/steps '`group`' \
    headless/study '`group`' >docs/architecture.md
touch src/host/a.h headless/group/a.h
echo '#include "headless/group/a.h"' >headless/group/steps/a.h
cp headless/group/steps/a.h headless/study/a.h
rules=$1
"$rules" . || { echo "an allowed include is refused"; exit 1; }

# $1: file; $2: what it includes against the tables
refuses() {
    echo "#include \"$2\"" >"$1"
    said=$("$rules" .) && { echo "$1 may include $2"; exit 1; }
    case $said in
    *"$1 $2"*) rm "$1" ;;
    *) echo "$2 in $1 is not named: $said"; exit 1 ;;
    esac
}
refuses headless/group/b.h headless/study/a.h
refuses headless/group/b.h headless/group/steps/a.h
refuses headless/study/b.h headless/group/steps/a.h
refuses src/host/b.h headless/group/a.h
refuses headless/group/b.h host/a.h

: >headless/study/a.h
said=$("$rules" .) && { echo "a permission that nothing uses passes"; exit 1; }
case $said in
*"headless/study may include, but does not:"*group*) ;;
*) echo "the unused permission is not named: $said"; exit 1 ;;
esac
