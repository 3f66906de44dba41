#!/usr/bin/env bash
# Builds the demo program qcommon (preset "default") and runs it.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/deps.sh
qc_require "${QC_NATIVE_PACKAGES[@]}"

cmake --preset default >/dev/null
cmake --build --preset default --target qcommon
./build/default/tools/qcommon info
./build/default/tools/qcommon ping 1000
