#!/usr/bin/env bash
# Builds the libFuzzer targets (preset fuzz: clang, ASan+UBSan) and runs each for a while.
#   scripts/fuzz.sh [seconds per target, default 20]
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/deps.sh
seconds="${1:-20}"
qc_require "${QC_NATIVE_PACKAGES[@]}" "${QC_FUZZ_PACKAGES[@]}"

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j "$(nproc)"
for fuzzer in build/fuzz/fuzz/qc_fuzz_*; do
    [ -x "$fuzzer" ] || continue
    name="$(basename "$fuzzer")"
    corpus="build/fuzz/corpus/$name"
    mkdir -p "$corpus"
    echo "== $name for ${seconds} s =="
    log="build/fuzz/$name.log"
    if ! "$fuzzer" -max_total_time="$seconds" -max_len=4096 -print_final_stats=1 "$corpus" \
        >"$log" 2>&1; then
        tail -n 60 "$log"
        echo "$name FAILED (log: $log)" >&2
        exit 1
    fi
    grep -E "^(Done|stat::new_units_added)" "$log" || true
done
