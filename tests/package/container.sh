#!/bin/sh
# Runs the container image as cluster software does: read-only root, data and results mounted, a user id without a name.
# By hand or by packaging/release; needs root and the permission to mount.
#
#   container.sh ARCHIVE.tar
set -eu
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
mkdir "$place/image" "$place/tree" "$place/data" "$place/out"
chown 4242:4242 "$place/out"
chmod 755 "$place"

tar xf "$1" -C "$place/image"
digest() { grep -oE "\"$1\":[^}]*sha256:[0-9a-f]{64}" "$2" | sed 's/.*sha256://'; }
blobs=$place/image/blobs/sha256
manifest=$blobs/$(digest manifests "$place/image/index.json")
entry=$(sed -E 's/.*"Entrypoint":\["([^"]*)"\].*/\1/' "$blobs/$(digest config "$manifest")")
tar xf "$blobs/$(digest layers "$manifest")" -C "$place/tree"

# In a mount namespace of its own, so that nothing stays mounted. $0: the folder; $1: the entry point.
# shellcheck disable=SC2016 # for the inner shell
unshare --mount sh -euc '
    mount --bind "$0/tree" "$0/tree"
    mount --bind /proc "$0/tree/proc"
    mount --bind "$0/data" "$0/tree/data"
    mount --bind "$0/out" "$0/tree/out"
    mount -o remount,bind,ro "$0/tree"
    chroot "$0/tree" "$1" simulate --size tiny --out /data/sample
    mount -o remount,bind,ro "$0/tree/data"
    inside() { chroot --userspec=4242:4242 "$0/tree" env -i "$@"; }
    if inside touch /tmp/file || inside touch /data/file; then exit 1; fi
    inside "$1" run /data/sample/sub-sim_task-blocks_bold.nii.gz --components 3 --seed 1 --out /out/result
' "$place" "$entry"

[ -s "$place/out/result/report.html" ] || { echo "FAILED: there is no report"; exit 1; }
[ "$(stat -c %u "$place/out/result/report.html")" = 4242 ] || { echo "FAILED: it belongs to another user"; exit 1; }
echo "The container works for user $(stat -c %u "$place/out/result") with a read-only root."
