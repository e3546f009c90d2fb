#!/usr/bin/env bash
# Sets everything up and runs the whole test suite: an optimised build with
# warnings as errors, then the same tests under AddressSanitizer and
# UndefinedBehaviorSanitizer. Both replay every fuzz target's corpus through its
# parser; scripts/fuzz.sh runs the fuzzers themselves.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
bash scripts/install-deps.sh
jobs="$(nproc)"

for preset in ci asan; do
  echo "== ${preset} build"
  cmake --preset "${preset}" > /dev/null
  cmake --build --preset "${preset}" -j "${jobs}"
  echo "== ${preset} tests"
  ctest --preset "${preset}" -j "${jobs}"
done
