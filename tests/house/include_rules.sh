#!/bin/sh
# Holds every #include between the folders against the table in docs/architecture.md.
#
#   include_rules.sh SOURCE_ROOT
set -u
cd "$1" || exit 1
bad=0

# may FOLDER PATTERN: the quoted includes of src/FOLDER must all match the pattern.
may() {
    found=$(grep -rHoE '#include "[^"]+"' "src/$1" | grep -vE "#include \"($2)/") && {
        echo "src/$1 may not include:"
        echo "$found"
        bad=1
    }
    # A folder without includes would pass unseen.
    [ "$(find "src/$1" -name '*.cpp' | wc -l)" -gt 0 ] || { echo "src/$1 has no sources"; bad=1; }
}

may numeric 'numeric'
may host 'numeric|host'
may input 'numeric|host|input'
may output 'numeric|host|output'
may ica 'numeric|host|input|output|ica'
may fingerprint 'numeric|host|fingerprint'
may plugin 'numeric|host|input|ica|fingerprint|output|plugin'

# The headless host shares the host's record layouts and the two lists of functions with the plug-in, nothing else.
records='host/(vtc_header|nrvmp_records|voi_records|host_text)\.h|host/host_(functions|matrix_products)\.def'
found=$(grep -rHoE '#include "(numeric|host|input|ica|fingerprint|output|plugin)/[^"]+"' headless \
    | grep -vE "\"($records)\"") && {
    echo "headless may not include:"
    echo "$found"
    bad=1
}
found=$(grep -rHoE '#include "headless[^"]*"' src) && {
    echo "the plug-in may not include:"
    echo "$found"
    bad=1
}
exit $bad
