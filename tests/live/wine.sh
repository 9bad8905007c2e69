#!/usr/bin/env bash
# Runs the Windows programs under Wine and holds them against the Linux programs; one case for each argument.
#
#     wine.sh CASE LINUX_PROGRAM WINDOWS_PROGRAM SAMPLE TABLES_FOLDER
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
case_name=$1 linux=$2 windows=$3 sample=$4 tables=$5

skip() {
    echo "skipped: $1"
    exit 77
}
fail() {
    echo "failed: $1" >&2
    exit 1
}

linux_inventory=$(dirname "$linux")/zorpinventory windows_inventory=$(dirname "$windows")/zorpinventory.exe

command -v wine >/dev/null || skip "wine is not installed"
for program in "$windows" "$windows_inventory"; do
    [ -x "$program" ] || skip "$program is not built (cmake --preset windows; cmake --build --preset windows)"
done
for program in "$linux" "$linux_inventory"; do
    [ -x "$program" ] || skip "$program is not built (cmake --preset release; cmake --build --preset release)"
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
# One prefix for all cases: making it takes longer than any of them.
export WINEPREFIX=${TMPDIR:-/tmp}/zorp-wine-$(id -u) WINEARCH=win64 WINEDEBUG=-all LC_ALL=C.UTF-8
export XDG_CONFIG_HOME=$work
# Making the prefix tells so on standard error.
[ -d "$WINEPREFIX" ] || wine "$windows" --version >/dev/null 2>&1
on_windows() { timeout 120 wine "$windows" "$@"; }
inventory_on_windows() { timeout 120 wine "$windows_inventory" "$@"; }

same() {
    cmp "$1" "$2" || fail "$3"
}

tables() {
    local table format count=0
    for table in "$sample" "$tables"/*.dmi; do
        [ -e "$table" ] || continue
        for format in json ndjson text; do
            "$linux" -f $format -s LoadTable="$table" >linux.out 2>linux.log
            on_windows -f $format -s LoadTable="$table" >windows.out 2>windows.log
            same linux.out windows.out "$table, $format"
            same linux.log windows.log "$table, $format: log"
        done
        count=$((count + 1))
    done
    on_windows --catalogue -f json | cmp - <("$linux" --catalogue -f json) || fail "catalogue"
    echo "$count tables give the same on both"
}

languages() {
    local language
    for language in de zh_CN; do
        "$linux" -l $language -s LoadTable="$sample" >linux.out 2>linux.log
        on_windows -l $language -s LoadTable="$sample" >windows.out 2>windows.log
        same linux.out windows.out "$language"
        on_windows -l $language --help | cmp - <("$linux" -l $language --help) || fail "help in $language"
    done
    "$linux" -s LoadTable="$sample" 2>/dev/null | cmp -s - windows.out && fail "it speaks English" || true
}

live() {
    on_windows -f json -s SaveTable=saved.dmi >windows.out
    grep -q '"uid":"SMBIOS:0x' windows.out || fail "the live table has no structure"
    "$linux" -f json -s LoadTable=saved.dmi >linux.out
    same linux.out windows.out "the saved live table"
    echo "$(grep -c '"uid"' windows.out) live devices, and the same from the saved table"
}

# A Windows block saved by somebody is read on both.
blocks() {
    "$linux" -f json -s LoadTable="$sample" -s SaveTable=dump.dmi >/dev/null 2>&1
    # Method, version 3.2, revision; the length of the table, little-endian; the table.
    local size octal
    size=$(($(stat -c %s dump.dmi) - 32))
    octal=$(printf '\\%03o\\%03o\\%03o\\000' $((size & 255)) $((size >> 8 & 255)) $((size >> 16 & 255)))
    {
        printf '\000\003\002\000%b' "$octal"
        tail -c +33 dump.dmi
    } >block.bin
    "$linux" -f json -s LoadTable=dump.dmi >dump.out 2>/dev/null
    "$linux" -f json -s LoadTable=block.bin >linux.out 2>/dev/null
    on_windows -f json -s LoadTable=block.bin >windows.out 2>/dev/null
    [ "$(grep -c '"uid"' linux.out)" -gt 60 ] || fail "a block is read"
    same dump.out linux.out "a block gives what the dump gives"
    same linux.out windows.out "a block on both"
}

paths() {
    local name="Käse-表.dmi" output="Ausgabe-输出.json"
    cp "$sample" "$name"
    "$linux" -f json -s LoadTable="$name" >linux.out 2>/dev/null
    on_windows -f json -s LoadTable="$name" -o "$output" 2>/dev/null
    same linux.out "$output" "names beyond ASCII on the command line"
    printf '[zorpsysinfosmbios2]\nLoadTable.value = %s\n' "$name" >einstellungen-设置.ini
    on_windows -f json --settings einstellungen-设置.ini 2>/dev/null | cmp - linux.out || fail "names in a settings file"
    on_windows -s LoadTable=fehlt-缺.dmi >/dev/null 2>windows.log
    grep -q '2603 Could not load SMBIOS table from file: fehlt-缺.dmi' windows.log || fail "names in the log"
    printf '[zorpsysinfosmbios2]\nLoadTable.value = \334r.dmi\n' >ansi.ini
    on_windows --settings ansi.ini >windows.out 2>windows.log
    grep -q '2603 Could not load SMBIOS table' windows.log && [ ! -s windows.out ] || fail "a name that is no UTF-8"
}

# What the program imports is part of every Windows.
dlls() {
    command -v x86_64-w64-mingw32-objdump >/dev/null || skip "x86_64-w64-mingw32-objdump is not installed"
    local program
    printf '%s\n' advapi32.dll kernel32.dll msvcrt.dll shell32.dll user32.dll ws2_32.dll >system
    for program in "$windows" "$windows_inventory"; do
        x86_64-w64-mingw32-objdump -p "$program" | sed -n 's/.*DLL Name: //p' | tr 'A-Z' 'a-z' | sort >imported
        [ -s imported ] || fail "no import of $program was found"
        comm -23 imported system | grep . && fail "$program needs more than Windows has" || true
    done
}

lines() {
    on_windows -s LoadTable="$sample" >windows.out 2>windows.log
    on_windows --nonsense >mistake.out
    grep -q '^OrbException: ' mistake.out || fail "a mistake is told"
    ! grep -l $'\r' windows.out windows.log mistake.out || fail "line ends were translated"
}

# More text than is kept in memory.
large() {
    python3 -c 'import sys
for n in range(8000): sys.stdout.buffer.write(bytes([2, 15, n & 255, n >> 8, *10 * [0], 255, 0, 0]))' >boards.bin
    "$linux" -s LoadTable=boards.bin >linux.out
    on_windows -s LoadTable=boards.bin >windows.out
    same linux.out windows.out "text of $(stat -c %s linux.out) bytes"
}

writes() {
    echo important >notes.txt
    on_windows -s LoadTable="$sample" -s SaveTable=notes.txt >/dev/null 2>windows.log
    grep -q 'notes.txt: not overwritten, it exists and is not an SMBIOS dump' windows.log || fail "a foreign file"
    [ "$(cat notes.txt)" = important ] || fail "a foreign file was changed"
    on_windows -s LoadTable="$sample" -s SaveTable=new.dmi >/dev/null 2>&1
    cp new.dmi old.dmi
    on_windows -s LoadTable="$sample" -s SaveTable=new.dmi >/dev/null 2>windows.log
    ! grep -q new.dmi windows.log || fail "a dump is replaced"
    same old.dmi new.dmi "saving twice"
    on_windows -s LoadTable="$sample" -s SaveTable=no/such/folder.dmi >/dev/null 2>windows.log
    grep -q 'folder.dmi: not written, No such file or directory' windows.log || fail "no folder"
    on_windows -f json -o no/such.json | grep -q '^OrbException: cannot write no/such.json' || fail "no folder for -o"
    on_windows --version -o notes.txt
    grep -q '^zorpsysinfosmbios2 ' notes.txt || fail "a file is replaced"
    on_windows --version -o NUL && [ ! -e NUL ] || fail "a device is written to as it stands"
    on_windows --version -o "$(printf 'n%.0s' {1..255})" | grep OrbException && fail "a long name" || true
    [ "$(find . -name '*.tmp' | wc -l)" = 0 ] || fail "something half-written was left behind"
}

# The second program: the same bytes and the same exit code.
same_inventory() {
    local linux_code=0 windows_code=0
    "$linux_inventory" "$@" <input >linux.out 2>/dev/null || linux_code=$?
    inventory_on_windows "$@" <input >windows.out 2>/dev/null || windows_code=$?
    same linux.out windows.out "$*"
    [ "$linux_code" = "$windows_code" ] || fail "$*: exit code $windows_code, not $linux_code"
}

inventory() {
    local machine before count=0
    : >input
    for machine in "$(dirname "$sample")"/sample*.dmi "$tables"/*.dmi; do
        [ -e "$machine" ] || continue
        same_inventory "$machine"
        same_inventory -f json "$machine"
        count=$((count + 1))
    done
    for before in "$sample" "$tables"/pairs/*.a.dmi; do
        [ -e "$before" ] || continue
        machine=${before%.a.dmi}.b.dmi
        [ -e "$machine" ] || machine=$(dirname "$sample")/sample_dell.dmi
        same_inventory diff "$before" "$machine"
        same_inventory diff -f json --all "$machine" "$before"
        count=$((count + 1))
    done
    for language in de zh_CN; do
        same_inventory -l $language "$sample"
        same_inventory diff -l $language "$sample" "$machine"
        same_inventory --help -l $language
    done
    echo "$count machines and changes are told alike"
}

inventory-sources() {
    mkdir "Käse 表"
    "$linux" -f json -s LoadTable="$sample" -s SaveTable="Käse 表/DMI" >/dev/null 2>&1
    "$linux" -d -f json -l en "$sample" >input 2>/dev/null
    cp input "Käse 表/a.json"
    cp "$windows" "$windows_inventory" "Käse 表" # beside each other, in a folder of such a name
    windows_inventory="Käse 表/zorpinventory.exe"
    same_inventory "Käse 表/DMI"
    same_inventory -f json "Käse 表/"
    # The last line names the source as it was named.
    inventory_on_windows 'Käse 表\' 2>/dev/null | head -n -1 |
        cmp - <("$linux_inventory" "Käse 表" 2>/dev/null | head -n -1) || fail "a folder"
    same_inventory "Käse 表/a.json"
    same_inventory -
    same_inventory diff - "Käse 表/DMI"
    inventory_on_windows -f json "Käse 表/a.json" -o "Käse 表/out" || fail "-o"
    same "Käse 表/out" <("$linux_inventory" -f json "Käse 表/a.json") "-o"
    # This machine's table, live and saved.
    on_windows -f json -s SaveTable=saved.dmi >/dev/null
    inventory_on_windows diff saved.dmi || fail "this machine is not what it was"
}

# Each is a sentence, exit code 2 and nothing else.
inventory-faults() {
    local code
    cp "$windows_inventory" .
    windows_inventory=./zorpinventory.exe
    : >input
    refuses() {
        local sentence=$1
        shift
        code=0
        inventory_on_windows "$@" <input >out 2>err || code=$?
        [ "$code" = 2 ] && [ ! -s out ] || fail "$*: exit code $code, $(head -c 100 out)"
        grep -qF "zorpinventory: $sentence" err && [ "$(wc -l <err)" = 1 ] || fail "$*: $(cat err)"
    }
    refuses 'zorpsysinfosmbios2 is neither beside this program nor in PATH' "$sample"
    echo 'no program' >zorpsysinfosmbios2.exe
    refuses 'cannot start ' "$sample"
    x86_64-w64-mingw32-g++-posix -static -o zorpsysinfosmbios2.exe "$here/strange_child.cpp"
    STRANGE=code refuses 'zorpsysinfosmbios2.exe ended with code 3 before it was done' "$sample"
    STRANGE=half refuses 'cannot read what zorpsysinfosmbios2 printed: it ends in the middle, at byte 10' "$sample"
    STRANGE=other refuses 'cannot read what zorpsysinfosmbios2 printed: ' "$sample"
    STRANGE=hang refuses 'zorpsysinfosmbios2.exe was still not done after 60 seconds and was ended' "$sample"
    refuses 'cannot read standard input: it is empty' -
    refuses 'standard input can be read once only' diff - -
    refuses 'cannot read missing: No such file or directory' missing
}

case $case_name in
tables | languages | live | blocks | paths | dlls | lines | large | writes | inventory | inventory-*) "$case_name" ;;
*) fail "no case $case_name" ;;
esac
