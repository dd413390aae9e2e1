#!/bin/sh
# Checks every #include between folders against the tables in docs/architecture.md, whose rows read
#
#   | `src/ica/` | what it holds | `numeric`, `host` |
#
#   include_rules.sh SOURCE_ROOT
set -u
cd "$1" || exit 1
bad=0

complain() {
    printf '%s\n%s\n' "$1" "$2"
    bad=1
}

# Rows of the tables with three columns: folder, then the folders that it may include.
# shellcheck disable=SC2016 # the backticks are those of the table
rows=$(sed -nE 's/^\| `((src|headless)\/[a-z/]+)\/` \|[^|]*\|([^|]*)\|$/\1 \3/p' docs/architecture.md | tr -d '`,')

# Folders of sources without a row, and rows without sources, would pass unnoticed.
listed=$(printf '%s\n' "$rows" | cut -d' ' -f1 | sort)
present=$(find src headless -name '*.h' | sed -E 's,/[^/]+$,,; s,^(src/plugin)/.*,\1,' | sort -u)
[ "$listed" = "$present" ] || complain 'docs/architecture.md lists:' "$listed
but the folders are:
$present"

# The headless host shares the record layouts and the lists of functions with the plug-in. A folder of the plug-in that
# its row names as `src/...` is shared as well, nothing else.
records='host/(vtc_header|nrvmp_records|voi_records|host_text)\.h|host/host_(functions|matrix_products|separation)\.def'

while read -r folder allowed; do
    case $folder in
    src/*) prefix='' others='^$' ;;
    *) prefix='headless/' others="^($records)$" ;;
    esac
    for name in $allowed; do
        case $name in src/*) others="$others|^${name#src/}/[^/]+$" ;; esac
    done
    pattern=$(printf '%s' "${folder#*/} $allowed" | sed 's/ *$//; s/  */|/g')
    found=$(find "$folder" -maxdepth 1 -name '*.h' -o -maxdepth 1 -name '*.cpp' | sort |
        xargs grep -HoE '#include "[^"]+"' | sed -E 's/:#include "([^"]+)"/ \1/' |
        awk -v allowed="^$prefix($pattern)/[^/]+$" -v others="$others" '$2 !~ allowed && $2 !~ others')
    [ -z "$found" ] || complain "$folder may not include:" "$found"
    for name in $allowed; do
        case $name in src/*) used=${name#src/} ;; *) used=$prefix$name ;; esac
        grep -qE "^#include \"$used/[^/]+\"" "$folder"/*.h "$folder"/*.cpp 2>/dev/null ||
            complain "$folder may include, but does not:" "$name"
    done
done <<ROWS
$rows
ROWS
exit $bad
