#!/usr/bin/env bash
# The manual page is well-formed, and has every option of the program and every code that the module logs.
#
#     manual.sh PAGE PROGRAM MODULE_FOLDER
set -euo pipefail
page=$1 program=$2 module=$3

for tool in man mandoc; do
    command -v "$tool" >/dev/null || {
        echo "skipped: $tool is not installed"
        exit 77
    }
done
fail() {
    echo "failed: $1" >&2
    exit 1
}

export LC_ALL=C.UTF-8
mandoc -Tlint -Wwarning "$page" || fail "mandoc warns"
[ -z "$(man --warnings -l "$page" 2>&1 >/dev/null)" ] || fail "man warns"

text=$(mandoc -Tascii "$page" | col -b)
options=$("$program" --help | grep -oE -- '--[a-z][a-z-]+' | sort -u)
codes=$(grep -rhoE '"[0-9]{3,4} "' "$module" | tr -d '" ')
[ -n "$options" ] && [ -n "$codes" ] || fail "nothing to look for"
for option in $options; do
    grep -qE -- "^ *(-., )?$option( |\$)" <<<"$text" || fail "$option is not described"
done
for code in $codes; do
    grep -qE "^ *$code " <<<"$text" || fail "the code $code is not described"
done
echo "$(wc -w <<<"$options") options and $(wc -w <<<"$codes") codes are described"
