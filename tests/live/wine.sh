#!/usr/bin/env bash
# Runs the Windows program under Wine and holds it against the Linux program; one case for each argument.
#
#     wine.sh CASE LINUX_PROGRAM WINDOWS_PROGRAM SAMPLE TABLES_FOLDER
set -euo pipefail
case_name=$1 linux=$2 windows=$3 sample=$4 tables=$5

skip() {
    echo "skipped: $1"
    exit 77
}
fail() {
    echo "failed: $1" >&2
    exit 1
}

command -v wine >/dev/null || skip "wine is not installed"
[ -x "$windows" ] || skip "$windows is not built (cmake --preset windows; cmake --build --preset windows)"
[ -x "$linux" ] || skip "$linux is not built (cmake --preset release; cmake --build --preset release)"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
# One prefix for all cases: making it takes longer than any of them.
export WINEPREFIX=${TMPDIR:-/tmp}/zorp-wine-$(id -u) WINEARCH=win64 WINEDEBUG=-all LC_ALL=C.UTF-8
export XDG_CONFIG_HOME=$work
# Making the prefix tells so on standard error.
[ -d "$WINEPREFIX" ] || wine "$windows" --version >/dev/null 2>&1
on_windows() { timeout 120 wine "$windows" "$@"; }

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
    x86_64-w64-mingw32-objdump -p "$windows" | sed -n 's/.*DLL Name: //p' | tr 'A-Z' 'a-z' | sort >imported
    printf '%s\n' advapi32.dll kernel32.dll msvcrt.dll shell32.dll >system
    [ -s imported ] || fail "no import was found"
    comm -23 imported system | grep . && fail "it needs more than Windows has" || true
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

case $case_name in
tables | languages | live | blocks | paths | dlls | lines | large | writes) "$case_name" ;;
*) fail "no case $case_name" ;;
esac
