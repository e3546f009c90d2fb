#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each for a while
# (FUZZ_SECONDS, default 30), starting from its seeds.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
seconds="${FUZZ_SECONDS:-30}"
cmake --preset fuzz > /dev/null
cmake --build --preset fuzz -j "$(nproc)"
for fuzzer in build/fuzz/fuzz/*_fuzzer; do
  name="$(basename "$fuzzer" _fuzzer)"
  corpus="build/fuzz/corpus/${name}"
  mkdir -p "$corpus"
  seeds=()
  [ -d "fuzz/seeds/${name}" ] && seeds+=("fuzz/seeds/${name}")
  echo "== ${name} (${seconds}s)"
  "$fuzzer" -max_total_time="${seconds}" -timeout=10 -rss_limit_mb=2048 -print_final_stats=0 \
    "$corpus" "${seeds[@]}" 2>&1 | tail -n 3
done
