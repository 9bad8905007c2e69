# Builds what the benchmarks run; sourced by the scripts beside it, from the repository's top folder.
. scripts/packages.sh

install_missing "${build_packages[@]}" "${bench_packages[@]}"
for preset in release bench; do
    cmake --preset "$preset" >&2
done
cmake --build --preset release --target zorpsysinfosmbios2 zorpinventory >&2
cmake --build --preset bench --target make-big-table read-and-write machine-tables >&2
