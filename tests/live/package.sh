#!/usr/bin/env bash
# Uses the packages as their users do: installs Debian's, tries all that it brought and removes it again; unpacks the
# zip file and runs its programs under Wine.
#
#     scripts/package && tests/live/package.sh
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
"$(dirname "$built")/zorpinventory" sample.dmi >expected-summary.txt 2>/dev/null
cp "$repository/build/package/share/sample_dell.dmi" .
"$(dirname "$built")/zorpinventory" diff sample.dmi sample_dell.dmi >expected-changes.txt 2>/dev/null || true

# What there is of the package's files and folders.
dpkg-deb --fsys-tarfile "$deb" | tar -t | sed 's|^\.||' >paths
present() {
    local path
    while read -r path; do
        [ ! -e "$path" ] || echo "$path"
    done <paths
}

# Documents that the documents in FOLDER speak of are among the FILES; a name may be compressed.
no_dead_links() {
    local folder=$1 files=$2 link
    find "$folder" \( -name '*.md' -o -name 'changelog.gz' \) -exec zcat -f {} + >speaks
    grep -oE '`[^` ]+\.(md|json)`|\]\([^)#:]+' speaks | tr -d '`' | sed 's/^](//' | sort -u >links
    [ -s links ] || fail "no document speaks of another"
    while read -r link; do
        grep -qE "/${link//./\\.}(\.gz)?\$" "$files" || fail "the documents speak of $link, which is not there"
    done <links
}

debian() {
    local shell program
    present >before
    # Containers often leave out documentation.
    "${root[@]}" dpkg --path-include='/usr/share/*' -i "$deb" >/dev/null
    present | cmp - paths || fail "not all was installed"

    "$tests/hardening.sh" "/usr/bin/$name" /usr/bin/zorpinventory
    zorpinventory sample.dmi 2>/dev/null | cmp - expected-summary.txt || fail "zorpinventory tells something else"
    (zorpinventory diff sample.dmi sample_dell.dmi 2>/dev/null || [ $? = 1 ]) | cmp - expected-changes.txt ||
        fail "zorpinventory tells other changes"
    "/usr/bin/$name" -f json -s LoadTable=sample.dmi >installed.json 2>/dev/null
    python3 -m json.tool installed.json >/dev/null || fail "the document is not valid"
    cmp installed.json expected.json || fail "the installed program prints something else"
    cmp "/usr/share/$name/catalogue.json" expected-catalogue.json || fail "another catalogue"
    for program in "$name" zorpinventory; do
        [ "$(man -w "$program")" = "/usr/share/man/man1/$program.1.gz" ] || fail "no manual page of $program"
    done
    for shell in bash zsh fish; do
        python3 "$tests/completions.py" "$shell" "/usr/bin/$name" || fail "completions in $shell"
    done
    no_dead_links "/usr/share/doc/$name" paths
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
    find "$folder" >unpacked
    no_dead_links "$folder" unpacked
    cmp "$folder/catalogue.json" expected-catalogue.json || fail "another catalogue in the zip file"
    "$tests/hardening.sh" "$folder/$name.exe" "$folder/zorpinventory.exe"
    # The prefix that the other tests under Wine use too.
    export WINEPREFIX=${TMPDIR:-/tmp}/zorp-wine-$(id -u) WINEARCH=win64 WINEDEBUG=-all
    timeout 120 wine "$folder/$name.exe" -f json -s LoadTable=sample.dmi 2>/dev/null | cmp - expected.json ||
        fail "the Windows program prints something else"
    timeout 120 wine "$folder/zorpinventory.exe" sample.dmi 2>/dev/null | cmp - expected-summary.txt ||
        fail "the Windows program tells something else"
    echo "$(basename "$zip") unpacks and works"
}

debian
windows
