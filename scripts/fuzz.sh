#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each for a while
# (FUZZ_SECONDS, default 30; FUZZ_TARGETS to pick some), starting from its seeds
# and its kept corpus in fuzz/corpus/<target>, with fuzz/dictionaries/<target>.dict
# when there is one. FUZZ_MERGE=1 afterwards minimises what the run found into
# fuzz/corpus/<target>, to be committed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
seconds="${FUZZ_SECONDS:-30}"
cmake --preset fuzz > /dev/null
cmake --build --preset fuzz -j "$(nproc)"
for fuzzer in build/fuzz/fuzz/*_fuzzer; do
  name="$(basename "$fuzzer" _fuzzer)"
  if [ -n "${FUZZ_TARGETS:-}" ] && [[ " ${FUZZ_TARGETS} " != *" ${name} "* ]]; then
    continue
  fi
  work="build/fuzz/corpus/${name}"
  kept="fuzz/corpus/${name}"
  mkdir -p "$work" "$kept"
  inputs=("$work" "$kept")
  [ -d "fuzz/seeds/${name}" ] && inputs+=("fuzz/seeds/${name}")
  options=(-max_total_time="${seconds}" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1)
  [ -f "fuzz/dictionaries/${name}.dict" ] && options+=(-dict="fuzz/dictionaries/${name}.dict")
  echo "== ${name} (${seconds}s)"
  "$fuzzer" "${options[@]}" "${inputs[@]}" 2>&1 | grep -E '^(#[0-9]+.*(DONE|INITED)|stat::|==[0-9]+==ERROR|SUMMARY)' || true
  if [ "${FUZZ_MERGE:-0}" = 1 ]; then
    merged="$(mktemp -d)"
    "$fuzzer" -merge=1 "$merged" "$kept" "$work" > /dev/null 2>&1
    rm -rf "$kept" && mv "$merged" "$kept"
    echo "   kept $(ls "$kept" | wc -l) inputs in $kept"
  fi
done
