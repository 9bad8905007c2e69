#!/usr/bin/env bash
# Builds the packages of the last commit once more, in another folder, for another user's surroundings, and compares
# them with those in build/packages.
#
#     scripts/package && tests/live/reproducible.sh
set -euo pipefail
cd "$(dirname "$0")/../.."

fail() {
    echo "failed: $1" >&2
    exit 1
}
git diff --quiet HEAD || fail "there are changes that no commit has; two builds of the last one are compared"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
(
    umask 077
    git clone --quiet "$PWD" "$work/another folder"
    TZ=XYZ-9 LC_ALL=C HOME=$work "$work/another folder/scripts/package" >"$work/log" 2>&1
) || fail "the second build: $(tail "$work/log")"
for package in build/packages/*; do
    cmp "$package" "$work/another folder/build/packages/$(basename "$package")" || fail "two builds of it differ"
    sha256sum "$package"
done
