#!/usr/bin/env bash
# The manual page is well-formed, and has every option of the program and every code that the module logs.
#
#     manual.sh PAGE [PROGRAM MODULE_FOLDER]
set -euo pipefail
page=$1 program=${2:-} module=${3:-}

for tool in col groff mandoc; do
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
# Whether the pages are installed that this one refers to is the machine's business.
! mandoc -Tlint -Wall "$page" 2>&1 | grep -v 'mandoc.db lacks\|referenced manual not found' >&2 || fail "mandoc warns"
[ -z "$(groff -ww -mdoc -Tutf8 -z "$page" 2>&1 | tee /dev/stderr)" ] || fail "groff warns"

text=$(mandoc -Tascii "$page" | col -b)
# A word of such a line that is a macro's name has no effect but to vanish.
sed -n 's/^\.Dl //p' "$page" | sed 's/\\&//g' | while read -r line; do
    grep -qF -- "$line" <<<"$text" || fail "this line is not shown: $line"
done
[ -n "$program" ] || exit 0

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
