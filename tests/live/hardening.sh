#!/usr/bin/env bash
# Looks at finished programs for what they are to defend themselves with.
#
#     hardening.sh PROGRAM...    of Linux, linked statically or not, or of Windows
set -euo pipefail

fail() {
    echo "failed: $program: $1" >&2
    exit 1
}
has() { grep -q -- "$1" <<<"$facts" || fail "$2"; }

windows() {
    facts=$(x86_64-w64-mingw32-objdump -p "$program")
    has HIGH_ENTROPY_VA "no address space layout randomisation of 64 bits"
    has DYNAMIC_BASE "no address space layout randomisation"
    has NX_COMPAT "data can be executed"
    ! grep -q ' 00000000 Base Relocation Directory' <<<"$facts" || fail "it cannot be moved, having no relocations"
    facts=$(strings "$program")
    has 'stack smashing detected' "no stack protector"
    has 'buffer overflow detected' "no fortified functions"
}

linux() {
    facts=$(readelf -hldW "$program")
    has 'DYN (Position-Independent Executable file)' "not position-independent"
    has GNU_RELRO "no part becomes read-only after the start"
    has 'FLAGS_1.* NOW' "not all symbols are bound at the start"
    has 'GNU_STACK .* RW ' "the stack can be executed"
    if grep -q INTERP <<<"$facts"; then
        facts=$(nm -D "$program")
        has __stack_chk_fail "no stack protector"
        has "printf_chk" "no fortified functions"
        return
    fi
    # Debian's static libraries alone bring 460 reads of the stack protector's value and 1,900 marks of branch targets.
    facts=$(objdump -d "$program")
    [ "$(grep -c '%fs:0x28' <<<"$facts")" -gt 800 ] || fail "no stack protector"
    [ "$(grep -c endbr64 <<<"$facts")" -gt 3000 ] || fail "no marks of branch targets"
}

for program in "$@"; do
    [ -f "$program" ] || {
        echo "skipped: $program is not built"
        exit 77
    }
    case $program in
    *.exe) windows ;;
    *) linux ;;
    esac
    echo "$program is hardened"
done
