# Installs Debian packages that are missing; sourced by the scripts beside it.

# install_missing PACKAGE...
install_missing() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        root=(sudo)
    fi
    echo "installing ${missing[*]}" >&2
    "${root[@]}" apt-get update -qq >&2
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
}

# What building needs, and what testing needs on top of it.
build_packages=(cmake g++ gettext libboost-dev libcli11-dev ninja-build rapidjson-dev)
test_packages=(dmidecode jq libgtest-dev python3 python3-jsonschema sqlite3)

# What the sanitizers and the fuzz targets need.
sanitizer_packages=(clang libclang-rt-14-dev)

# What the benchmarks need on top of building.
bench_packages=(dmidecode libbenchmark-dev python3 time valgrind)

# What the live tests need; without these they are skipped.
live_packages=(bash-completion bsdextrautils cpio fish g++-mingw-w64-x86-64-posix man-db mandoc qemu-system-x86 wine
    wine64 zsh)

# What making the packages needs.
packaging_packages=(dpkg-dev file g++-mingw-w64-x86-64-posix lintian)
