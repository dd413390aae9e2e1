#!/bin/sh
# Checks the page for a browser as a file by itself: it refers to no other file, forbids requests, and analyses the
# sample in Chromium as the command does.
#
#   page.sh PAGE ZNICA
set -eu
page=$(realpath "$1")
znica=$(realpath "$2")
cd "$(dirname "$0")/../report"
if [ ! -s "$page" ]; then
    echo "The page was not found at $page; scripts/web_build builds it."
    exit 77
fi
fail() {
    echo "FAILED: $*"
    exit 1
}

# What is packed in base64 has no angle brackets.
elements=$(grep -oE '<[a-z]+ [^<>]*>' "$page")
found=$(printf '%s\n' "$elements" | sed -nE '/href="data:,"/d; /(src|href|action)="/p')
[ -z "$found" ] || fail "it refers to something: $found"
printf '%s\n' "$elements" | grep -q "Content-Security-Policy.*default-src 'none'" || fail "it does not forbid requests"

[ -d node_modules ] || npm ci --no-audit --no-fund
cd ../web
CI=1 ZNICA_PAGE=$page ZNICA=$znica MEASURED_DATA_FOLDER='' node --test runs.test.mjs
echo "The page is one file, which analyses the sample as the command does."
