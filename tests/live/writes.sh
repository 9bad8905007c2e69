#!/usr/bin/env bash
# Saves tables where that is dangerous or cannot work, for real: links, foreign files, read-only and full file systems.
#
#     writes.sh LINUX_PROGRAM SAMPLE
set -euo pipefail
program=$1 sample=$2

if [ "${inside:-}" != yes ]; then
    [ -x "$program" ] || {
        echo "skipped: $program is not built"
        exit 77
    }
    # Mounts of our own, which vanish with this process.
    unshare -m true 2>/dev/null || {
        echo "skipped: unshare -m needs to be root"
        exit 77
    }
    inside=yes exec unshare -m "$0" "$@"
fi

work=$(mktemp -d)
trap 'umount "$work/full" "$work/sealed" /proc 2>/dev/null; rm -rf "$work"' EXIT
cd "$work"
mkdir full sealed
fail() {
    echo "failed: $1" >&2
    exit 1
}

# refused TARGET REASON: saving is refused for this reason, and the inventory comes all the same.
refused() {
    "$program" -f json -s LoadTable="$sample" -s SaveTable="$1" >out 2>log
    grep -qF "$1: not $2" log || fail "$1: wanted \"not $2\", got: $(cat log)"
    [ "$(grep -c '"uid"' out)" -gt 60 ] || fail "$1: the discovery did not go on"
}

# The umask must not matter: a table holds serial numbers.
(umask 000 && "$program" -s LoadTable="$sample" -s SaveTable=new.dmi >/dev/null 2>&1)
[ "$(stat -c %a new.dmi)" = 600 ] || fail "a saved table is readable by others"
cp new.dmi before.dmi
"$program" -s LoadTable="$sample" -s SaveTable=new.dmi >/dev/null 2>log
! grep -q new.dmi log || fail "an existing dump is replaced"
cmp before.dmi new.dmi

echo important >notes.txt
refused notes.txt "overwritten, it exists and is not an SMBIOS dump"
[ "$(cat notes.txt)" = important ] || fail "a foreign file was changed"

ln -s notes.txt link
refused link "overwritten, it is a symbolic link"
ln -s nothing-yet dangling
refused dangling "overwritten, it is a symbolic link to a file that does not exist"
[ ! -e nothing-yet ] || fail "a dangling link was followed"
ln -s new.dmi to-a-dump
refused to-a-dump "overwritten, it is a symbolic link"
mkfifo pipe
refused pipe "overwritten, it is not a regular file"
refused sealed "overwritten, it is not a regular file"
refused no/such/folder.dmi "written, No such file or directory"

mount -t tmpfs -o size=16k tmpfs full
head -c 16k /dev/zero >full/ballast
refused full/table.dmi "written, No space left on device"
[ "$(ls full)" = ballast ] || fail "a full file system keeps half a file: $(ls full)"
"$program" -f json -s LoadTable="$sample" -o full/out.json >out 2>/dev/null
grep -q '^OrbException: cannot write full/out.json: No space left on device' out || fail "-o on a full file system"
[ "$(ls full)" = ballast ] || fail "a full file system keeps half an inventory: $(ls full)"

mount -t tmpfs -o ro tmpfs sealed
refused sealed/table.dmi "written, Read-only file system"
"$program" -s LoadTable="$sample" -o sealed/out.txt >out 2>/dev/null
grep -q '^OrbException: cannot write sealed/out.txt: Read-only file system' out || fail "-o on a sealed file system"

# Whose a file is that is replaced.
echo old >owned.txt
chmod 640 owned.txt
chown 1234:2345 owned.txt
"$program" --version -o owned.txt
[ "$(stat -c '%u:%g %a' owned.txt)" = "1234:2345 640" ] || fail "-o: $(stat -c '%u:%g %a' owned.txt)"
mkdir -m 777 shared
cp "$program" shared/program
chmod 755 .
echo old >shared/root.txt
setpriv --reuid 65534 --regid 65534 --clear-groups shared/program --version -o shared/root.txt >out
grep -q '^OrbException: cannot write shared/root.txt: it exists, and the group' out || fail "another group: $(cat out)"
[ "$(cat shared/root.txt)" = old ] || fail "a file was replaced whose group could not be kept"
[ "$(ls -A shared)" = $'program\nroot.txt' ] || fail "something is left: $(ls -A shared)"

# Without /proc no file can be without a name; a signal has to remove it then.
mount -t tmpfs tmpfs /proc
"$program" -s LoadTable="$sample" -s SaveTable=unproc.dmi >/dev/null 2>&1
"$program" -s LoadTable="$sample" -s SaveTable=unproc.dmi -o unproc.txt 2>/dev/null
cmp before.dmi unproc.dmi && grep -q SMBIOS unproc.txt || fail "files are written without /proc"
[ "$(stat -c %a unproc.dmi)" = 600 ] || fail "a table saved without /proc is readable by others"
mkfifo log-that-is-full
exec 9<>log-that-is-full
head -c 65536 /dev/zero >&9
for signal in TERM HUP; do
    "$program" -o unproc.txt -s LoadTable=/nonexistent 2>&9 &
    for ((i = 0; i < 500; ++i)); do
        compgen -G '.zorp-*' >written && break
        sleep 0.02
    done
    [ -s written ] || fail "it is not writing"
    kill -$signal $!
    wait $! && fail "SIG$signal does not end it"
    ! compgen -G '.zorp-*' || fail "SIG$signal leaves a file behind"
done
umount /proc
echo "every dangerous target was refused"
