#!/bin/sh
# Installs and uses the packages on a machine that has nothing but a minimal Debian: a chroot.
#
#   fresh_machine.sh FOLDER_OF_PACKAGES [SUITE]     SUITE: another release of Debian than bookworm, only for the tarball
set -eu
packages=$1
suite=${2-bookworm}
if [ "$(id -u)" -ne 0 ]; then
    echo "Only root can change the root folder."
    exit 77
fi

machine=$(mktemp -d)
log=$(mktemp)
clean_up() {
    ! mountpoint -q "$machine/proc" || umount "$machine/proc"
    rm -rf "$machine" "$log"
}
trap clean_up EXIT
fail() {
    echo "FAILED: $*"
    exit 1
}
# Both run a command in the machine. A user without a name or home stands for all who are not root.
as_root() { chroot "$machine" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive "$@"; }
as_user() { chroot --userspec=1234:1234 "$machine" env -i PATH=/usr/bin:/bin "$@"; }

# $1: znica in the machine; $2: a new folder for its results
use() {
    as_user "$1" --version
    as_user "$1" simulate --size tiny --out "$2/sample"
    as_user "$1" run "$2/sample/sub-sim_task-blocks_bold.nii.gz" --components 3 --seed 1 --out "$2/result"
    as_user "$1" score --truth "$2/sample" "$2/result"
    [ -s "$machine/$2/result/report.html" ] || fail "$1 wrote no report"
}

# A study by the job array that is installed. $1: bin/znica in the machine; $2: share/znica; $3: a new folder
use_workflow() {
    for file in Snakefile profiles/slurm/config.yaml; do
        [ -r "$machine/$2/workflow/$file" ] || fail "there is no $2/workflow/$file"
    done
    for file in group.sh profiles/sbatch/job-status; do
        as_user test -x "$2/workflow/$file" || fail "$2/workflow/$file cannot be run"
    done
    as_user mkdir -p "$3/data/sub-01/func"
    as_user "$1" simulate --size tiny --out "$3/sample"
    for ending in bold.nii.gz bold.json; do
        as_user mv "$3/sample/sub-sim_task-blocks_$ending" "$3/data/sub-01/func/sub-01_task-blocks_$ending"
    done
    as_user sh -c "'$1' bids '$3/data' '$3/study' participant --list > '$3/runs.tsv'"
    as_user env ZNICA="$1" SLURM_ARRAY_TASK_ID=1 \
        bash "$2/workflow/array.sbatch" "$3/runs.tsv" "$3/data" "$3/study" --components 3 --seed 1
    [ -s "$machine/$3/study/sub-01_task-blocks.html" ] || fail "the job array left no report"
}

mmdebstrap --quiet --variant=apt --aptopt='Acquire::Retries "3"' --dpkgopt=force-unsafe-io \
    "$suite" "$machine" >"$log" 2>&1 ||
    { cat "$log"; fail "mmdebstrap"; }
if ! mount --bind /proc "$machine/proc"; then
    echo "Mounting is not allowed here."
    exit 77
fi

echo "== The tarball, without root"
found=$(find "$machine/usr/lib" -name 'libopenblas*' -o -name 'libblas*' -o -name 'libnifti*')
[ -z "$found" ] || fail "the machine is not fresh: $found"
cp "$packages"/znica-*.tar.gz "$machine/tmp"
as_user mkdir "/tmp/a place"
as_user sh -c 'tar xzf /tmp/znica-*.tar.gz --strip-components=1 -C "/tmp/a place"'
use "/tmp/a place/bin/znica" /tmp/first
as_user mv "/tmp/a place" /tmp/moved
as_user ln -s moved/bin/znica /tmp/link
use /tmp/link /tmp/second
use_workflow /tmp/link /tmp/moved/share/znica /tmp/study
as_user /tmp/link info | grep -x "file: /tmp/moved/lib/znica/ICAPlugin.so" || fail "another plug-in was loaded"
# Libraries that a cluster's modules bring along are not used in place of those in the tarball.
as_user mkdir /tmp/modules
for library in "$machine"/tmp/moved/lib/znica/*.so.*; do : >"$machine/tmp/modules/${library##*/}"; done
as_user env LD_LIBRARY_PATH=/tmp/modules /tmp/link --version || fail "LD_LIBRARY_PATH changes the libraries"
rm -rf "$machine"/tmp/*
[ "$suite" = bookworm ] || exit 0

echo "== The Debian package"
files() { (cd "$machine" && find . -xdev ! -path './tmp/*' ! -path './proc/*' ! -path './var/*' | sort); }
before=$(files)
cp "$packages"/znica_*.deb "$machine/tmp"
as_root sh -c 'apt-get update -qq && apt-get install -y --no-install-recommends /tmp/znica_*.deb' >"$log" 2>&1 ||
    { cat "$log"; fail "installing the package"; }
as_root dpkg --verify znica
use znica /tmp/installed
use_workflow /usr/bin/znica /usr/share/znica /tmp/study
commands=$(as_user znica --help | sed -n '/^Commands/,/^Exit/s/^  \([a-z]\{1,\}\) .*/\1/p')
[ -n "$commands" ] || fail "znica --help lists no commands"
for command in $commands; do
    [ -s "$machine/usr/share/man/man1/znica-$command.1.gz" ] || fail "no manual page of znica $command"
done
as_root apt-get purge -y --auto-remove znica >"$log" 2>&1 || { cat "$log"; fail "removing the package"; }
after=$(files)
[ "$before" = "$after" ] || fail "left behind or taken away:
$(printf '%s\n%s\n' "$before" "$after" | sort | uniq -u)"
left=$(find "$machine/var" -name '*znica*' ! -path '*/var/cache/apt/*')
[ -z "$left" ] || fail "left behind: $left"
echo "Removed without a trace."
