# shellcheck shell=sh
# Sourced by the other scripts: installs the Debian packages that are missing.

# need_packages PACKAGE...: does nothing if all are installed; uses sudo unless run as root.
need_packages() {
    missing=""
    for package in "$@"; do
        status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) || status=unknown
        [ "$status" = installed ] || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0

    as_root=""
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null 2>&1; then
            echo "These Debian packages are missing:$missing. Install them as root, or install sudo, and try again." >&2
            exit 1
        fi
        as_root=sudo
    fi
    echo "Installing:$missing"
    log=$(mktemp)
    # shellcheck disable=SC2086 # the list must be split
    { $as_root apt-get update -qq &&
        $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing; } \
        >"$log" 2>&1 || {
        cat "$log" >&2
        rm -f "$log"
        echo "The packages could not be installed; see above." >&2
        exit 1
    }
    rm -f "$log"
}

# What every build needs.
# shellcheck disable=SC2034 # for the scripts that source this one
BUILD_PACKAGES="g++ cmake ninja-build libnifti-dev libopenblas-dev liblapacke-dev libcli11-dev nlohmann-json3-dev libisal-dev zlib1g-dev"

# What the page that analyses data in a browser needs besides a Node.js.
# shellcheck disable=SC2034 # for the scripts that source this one
WEB_PACKAGES="emscripten node-acorn libeigen3-dev libcli11-dev nlohmann-json3-dev cmake ninja-build"

# The report's page is built with Node.js 18 or later. A Node.js from elsewhere is as good as Debian's.
need_node() {
    if ! command -v node >/dev/null 2>&1 || ! command -v npm >/dev/null 2>&1; then
        need_packages nodejs npm
    fi
}
