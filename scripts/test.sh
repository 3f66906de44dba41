#!/usr/bin/env bash
# Builds and runs the whole test suite.
#   scripts/test.sh [preset] [extra ctest arguments...]
# preset: default (the default), debug, clang, asan, tsan, or windows (mingw-w64 cross build,
# every test program run under Wine in a private prefix inside build/windows).
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/deps.sh
preset="${1:-default}"
shift || true
jobs="$(nproc)"

if [ "$preset" = windows ]; then
    qc_require "${QC_WINDOWS_PACKAGES[@]}"
    cmake --preset windows >/dev/null
    cmake --build --preset windows -j "$jobs"
    # One wineserver for the whole run saves its start-up in every test process.
    wine_run=build/windows/wine-run.sh
    "$wine_run" --server-start
    trap '"$wine_run" --server-stop' EXIT
    ctest --preset windows -j "$jobs" "$@"
    exit
fi

packages=("${QC_NATIVE_PACKAGES[@]}")
[ "$preset" = clang ] && packages+=(clang)
qc_require "${packages[@]}"

cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" -j "$jobs"
ctest --preset "$preset" -j "$jobs" "$@"
