#!/usr/bin/env bash
# Uses the packages as their users do: installs Debian's, tries all that it brought and removes it again; unpacks the
# zip file and runs its program under Wine.
set -euo pipefail
tests=$(cd "$(dirname "$0")" && pwd)
repository=$(cd "$tests/../.." && pwd)
name=zorpsysinfosmbios2
built=$repository/build/package/bin/$name
deb=$(echo "$repository"/build/packages/*.deb)
zip=$(echo "$repository"/build/packages/*.zip)

fail() {
    echo "failed: $1" >&2
    exit 1
}
root=()
[ "$(id -u)" -eq 0 ] || root=(sudo)
! dpkg-query -W "$name" >/dev/null 2>&1 || fail "$name is installed here already; remove it first"

work=$(mktemp -d)
trap '"${root[@]}" dpkg --purge "$name" >/dev/null 2>&1 || true; rm -rf "$work"' EXIT
cd "$work"
cp "$repository/build/package/share/sample.dmi" .
export LC_ALL=C.UTF-8 XDG_CONFIG_HOME=$work
"$built" -f json -s LoadTable=sample.dmi >expected.json 2>/dev/null
"$built" --catalogue -f json >expected-catalogue.json

# What there is of the package's files and folders.
dpkg-deb --fsys-tarfile "$deb" | tar -t | sed 's|^\.||' >paths
present() {
    local path
    while read -r path; do
        [ ! -e "$path" ] || echo "$path"
    done <paths
}

debian() {
    local shell status
    present >before
    # Containers often leave out documentation.
    "${root[@]}" dpkg --path-include='/usr/share/*' -i "$deb" >/dev/null
    present | cmp - paths || fail "not all was installed"

    "/usr/sbin/$name" -f json -s LoadTable=sample.dmi >installed.json 2>/dev/null
    python3 -m json.tool installed.json >/dev/null || fail "the document is not valid"
    cmp installed.json expected.json || fail "the installed program prints something else"
    cmp "/usr/share/$name/catalogue.json" expected-catalogue.json || fail "another catalogue"
    [ "$(man -w "$name")" = "/usr/share/man/man8/$name.8.gz" ] || fail "the manual page is not found"
    for shell in bash zsh fish; do
        status=0
        python3 "$tests/completions.py" "$shell" "/usr/sbin/$name" || status=$?
        [ $status -eq 0 ] || [ $status -eq 77 ] || fail "completions in $shell"
    done
    ! xargs -a paths grep -lsF "$repository" || fail "these refer to the build tree"

    "${root[@]}" dpkg --purge "$name" >/dev/null
    present | cmp - before || fail "removing left something behind"
    echo "$(basename "$deb") installs, works and vanishes"
}

windows() {
    local folder
    python3 -m zipfile -e "$zip" .
    folder=$(basename "$zip" .zip)
    [ -s "$folder/README.md" ] || fail "no README in the zip file"
    cmp "$folder/catalogue.json" expected-catalogue.json || fail "another catalogue in the zip file"
    if ! command -v wine >/dev/null; then
        echo "skipped: $(basename "$zip") was not run, wine is not installed"
        return
    fi
    # The prefix that the other tests under Wine use too.
    export WINEPREFIX=${TMPDIR:-/tmp}/zorp-wine-$(id -u) WINEARCH=win64 WINEDEBUG=-all
    timeout 120 wine "$folder/$name.exe" -f json -s LoadTable=sample.dmi 2>/dev/null | cmp - expected.json ||
        fail "the Windows program prints something else"
    echo "$(basename "$zip") unpacks and works"
}

debian
windows
