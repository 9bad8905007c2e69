# Installs Debian packages that are missing; sourced by the scripts beside it.

# install_missing PACKAGE...: under INSTALL_NOTHING it fails instead, and names them.
install_missing() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ -n "${INSTALL_NOTHING:-}" ]; then
        echo "missing in scripts/packages.sh, all_packages: ${missing[*]}" >&2
        return 1
    fi
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        root=(sudo)
    fi
    echo "installing ${missing[*]}" >&2
    "${root[@]}" apt-get update -qq >&2
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

# What building needs.
build_packages=(cmake g++ gettext libboost1.81-dev libcli11-dev libgcrypt20-dev libsqlite3-dev libxxhash-dev ninja-build
    rapidjson-dev)

# What the Windows programs need on top of it. npm, which brings SQLite's source, may have come with Node.js.
windows_packages=(g++-mingw-w64-x86-64-posix libgcrypt-mingw-w64-dev)
command -v npm >/dev/null || windows_packages+=(npm)

# What the tests need on top of it, and what the live ones of them need.
test_packages=(dmidecode jq libgtest-dev python3 python3-jsonschema sqlite3)
live_packages=(bash-completion binutils bsdextrautils cpio fish groff-base man-db mandoc qemu-system-x86 util-linux wine
    wine64 zsh)

# What the checks of style need.
style_packages=(clang-format clang-tidy git jq python3-polib unicode-data)

# What the sanitizers and the fuzz targets need.
sanitizer_packages=(clang libclang-rt-14-dev)

# What the benchmarks need.
bench_packages=(dmidecode libbenchmark-dev python3 time valgrind)

# What making the packages needs.
packaging_packages=(dpkg-dev file git lintian)

# What any of the checks needs that a change has to pass.
all_packages=("${build_packages[@]}" "${windows_packages[@]}" "${test_packages[@]}" "${live_packages[@]}"
    "${style_packages[@]}" "${sanitizer_packages[@]}" "${bench_packages[@]}" "${packaging_packages[@]}")
