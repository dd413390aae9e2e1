# shellcheck shell=sh
# Sourced by the other scripts: installs the Debian packages that are missing.

# $1: why the packages in $missing cannot be installed. Says what to do instead, and ends the script.
cannot_install() {
    cat >&2 <<TEXT
$1.
Missing packages (names as in Debian 12):$missing

Either let an administrator run
    apt-get install --no-install-recommends$missing
and start this script again; or use a ready-made znica: the tarball znica-...-linux-x86_64.tar.gz needs neither root nor
these packages, on any x86-64 Linux with glibc 2.36 or later. docs/installing.md says more.
TEXT
    exit 1
}

# need_packages PACKAGE...: does nothing if all are installed; uses sudo unless run as root.
need_packages() {
    missing=""
    for package in "$@"; do
        status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) || status=unknown
        [ "$status" = installed ] || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0

    command -v apt-get >/dev/null 2>&1 || cannot_install "This is not Debian: there is no apt-get"
    as_root=""
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null 2>&1 || cannot_install "Only root can install packages, and there is no sudo"
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
        cannot_install "The packages could not be installed; see above"
    }
    rm -f "$log"
}

# What every build needs.
# shellcheck disable=SC2034 # for the scripts that source this one
BUILD_PACKAGES="g++ cmake ninja-build libnifti-dev libopenblas-dev liblapacke-dev libcli11-dev nlohmann-json3-dev libdeflate-dev libisal-dev libssl-dev zlib1g-dev"

# What the page that analyses data in a browser needs besides a Node.js.
# shellcheck disable=SC2034 # for the scripts that source this one
WEB_PACKAGES="emscripten node-acorn libeigen3-dev libcli11-dev nlohmann-json3-dev cmake ninja-build"

# What builds the report's page: Node.js 18 or later. A Node.js from elsewhere is as good as Debian's.
node_packages() {
    if ! command -v node >/dev/null 2>&1 || ! command -v npm >/dev/null 2>&1; then echo nodejs npm; fi
}
