#!/usr/bin/env bash
# Boots a kernel in an emulator whose firmware has the sample machine's table, runs the program in there, and checks
# what it found; emulator-64 once more with another memory module, which zorpinventory has to tell.
#
# usage: emulator.sh TEST PROGRAM GUEST_INIT SAMPLE_DUMP FOLDER
#
# TEST is emulator-32, emulator-64, emulator-devmem-32, emulator-devmem-64 or emulator-user. PROGRAM and GUEST_INIT
# are statically linked; all paths are absolute. The kernel and what the test leaves behind are kept in FOLDER. Exit
# code 77: skipped.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
test=$1 program=$2 guest_init=$3 sample=$4 folder=$5
inventory=$(dirname "$program")/zorpinventory

skip() {
    echo "skipped: $1"
    exit 77
}

fail() {
    echo "failed: $1"
    exit 1
}

for tool in qemu-system-x86_64 cpio python3 flock; do
    command -v "$tool" >/dev/null || skip "$tool is missing"
done
[ -f "$program" ] || skip "$program is missing: cmake --preset release && cmake --build --preset release"

# A program older than its sources would be tested in the place of the one that is meant.
tree=$(dirname "$(dirname "$program")")
if [ -f "$tree/build.ninja" ] && command -v ninja >/dev/null; then
    ninja -C "$tree" -n zorpsysinfosmbios2 zorpinventory | grep -q 'no work to do' ||
        fail "$program or $inventory is older than its sources: cmake --build --preset release"
fi

# The kernel is taken out of Debian's package; nothing is installed.
fetch_kernel() {
    local package
    package=$(apt-cache depends linux-image-cloud-amd64 | sed -n 's/.*Depends: \(linux-image-[0-9].*\)/\1/p')
    [ -n "$package" ] || return 1
    rm -rf package
    mkdir package
    (cd package && apt-get -o APT::Sandbox::User=root download "$package") || return 1
    dpkg-deb -x package/*.deb package || return 1
    mv package/boot/vmlinuz-* vmlinuz || return 1
    rm -r package
}

mkdir -p "$folder"
cd "$folder"
(
    # Tests run side by side; one of them fetches.
    flock 9
    [ -f vmlinuz ] || {
        # Package lists that are missing or old are renewed where that is allowed.
        fetch_kernel || { apt-get update && fetch_kernel; }
    } >kernel.log 2>&1
) 9>kernel.lock || skip "the package linux-image-cloud-amd64 is missing and apt cannot fetch it, see $folder/kernel.log"

rm -rf "${folder:?}/$test"
mkdir -p "$test"/{root,structures}
cd "$test"

cp "$program" root/program
cp "$guest_init" root/init
cp "$sample" root/sample.dmi
chmod 755 root/program root/init
(cd root && printf '%s\n' . init program sample.dmi | cpio --quiet -o -H newc) >initramfs

# The emulator takes one structure a file. It insists on one processor structure for each socket.
python3 "$here/split_table.py" "$sample" structures
sockets=$(find structures -name '*-4.bin' | wc -l)

# Run live and saved, then from the saved file, then from the sample's. /dev/mem needs no kernel parameter: the table
# lies in reserved memory, which even a kernel with STRICT_DEVMEM lets root map. It refuses to read() it, though,
# because it lies above the last RAM.
from_files='+run saved -f json -s LoadTable=/tmp/live.dmi +run sample -f json -s LoadTable=/sample.dmi'
live='+run live -f json -s SaveTable=/tmp/live.dmi'
case $test in
emulator-32 | emulator-64) steps="+sysfs $live $from_files" ;;
emulator-devmem-32 | emulator-devmem-64) steps="+devices $live $from_files +sysfs +run sysfs -f json" ;;
emulator-user) steps="+user +devices +run memory -f json +sysfs +run live -f json" ;;
*) fail "no such test: $test" ;;
esac
case $test in
*-32) entry_point=32 version=2.8 ;;
*) entry_point=64 version=3.0.0 ;;
esac

# boot OUTPUTS STEPS: with all structures; the guest's outputs are in the folder OUTPUTS then.
boot() {
    local outputs=$1 steps=$2 firmware=() structure code
    for structure in structures/*.bin; do
        firmware+=(-smbios "file=$structure")
    done
    timeout -k 5 120 qemu-system-x86_64 -nodefaults -no-user-config -no-reboot -display none -serial stdio \
        -machine "pc,smbios-entry-point-type=$entry_point" -accel tcg -m 256 -smp "1,sockets=$sockets,maxcpus=$sockets" \
        "${firmware[@]}" -kernel ../vmlinuz -initrd initramfs \
        -append "console=ttyS0 quiet loglevel=1 panic=-1 -- $steps" </dev/null >console 2>emulator.err || {
        tail -n 20 emulator.err console
        fail "the emulator ended with exit code $? (124: after 120 s)"
    }
    mkdir "$outputs"
    python3 "$here/guest_outputs.py" console "$outputs" || {
        tail -n 20 emulator.err console | cut -c 1-300
        fail "the guest's outputs are not complete"
    }
    for code in "$outputs"/*.exit; do
        [ "$(cat "$code")" = 0 ] || fail "${code%.exit} ended with exit code $(cat "$code"): $(cat "${code%.exit}.err")"
    done
}
boot outputs "$steps"
cd outputs

if [ "$test" = emulator-user ]; then
    for run in live memory; do
        python3 -c 'import json, sys; sys.exit(json.load(open(sys.argv[1], "rb"))["devices"] != [])' $run.out ||
            fail "the output is no JSON document with an empty device list: $(head -c 300 $run.out)"
    done
    grep '/sys/firmware/dmi/tables/[^ ]*: Permission denied; run as root' live.err ||
        fail "the log does not name the refused file and what to do: $(cat live.err)"
    grep '/dev/mem: Permission denied; run as root' memory.err ||
        fail "the log does not name the refused device and what to do: $(cat memory.err)"
    exit 0
fi

# The program's word for the sample must not depend on the machine that it runs on.
HOME=/nonexistent XDG_CONFIG_HOME=/nonexistent LC_ALL=C "$program" -f json -s "LoadTable=$sample" >expected 2>log
cmp expected sample.out || fail "the sample's file gives something else in the guest than here"

cmp live.out saved.out || fail "the saved table gives something else than the live one: $(cat live.err saved.err)"
[ ! -f sysfs.out ] || cmp live.out sysfs.out || fail "/dev/mem gives something else than sysfs: $(cat live.err)"
python3 "$here/compare_inventories.py" live.out expected "$version" ||
    fail "the table is not the sample's: $(cat live.err)"

[ "$test" = emulator-64 ] || exit 0
cd ..
python3 - structures/*-17.bin <<'PYTHON'
import pathlib, sys
path = next(path for path in map(pathlib.Path, sys.argv[1:]) if b"DIMM B1\0" in path.read_bytes())
module = path.read_bytes().replace(b"DIMM B1", b"DIMM E1").replace(b"5E00220B", b"5E00220C")
path.with_stem(path.stem + "-another").write_bytes(module[:2] + b"\xF0\x11" + module[4:])
PYTHON
boot second "+sysfs +run live -f json"
"$inventory" diff outputs/live.out second/live.out >told || [ $? = 1 ] || fail "zorpinventory cannot compare the two"
printf '%s\n' '+ Memory Device  DIMM E1, 16 GB, DDR4  serial 5E00220C' '1 change' | diff - told ||
    fail "the module that was added is not what is told"
