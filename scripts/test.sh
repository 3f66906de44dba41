#!/usr/bin/env bash
# Builds and runs the whole test suite.
#   scripts/test.sh [preset] [extra ctest arguments...]
# preset: default (the default), debug, clang, asan or tsan.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/deps.sh
preset="${1:-default}"
shift || true
packages=("${QC_NATIVE_PACKAGES[@]}")
[ "$preset" = clang ] && packages+=(clang)
qc_require "${packages[@]}"

jobs="$(nproc)"
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" -j "$jobs"
ctest --preset "$preset" -j "$jobs" "$@"
