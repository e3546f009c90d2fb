#!/usr/bin/env bash
# Sets everything up and runs the whole test suite: an optimised build with
# warnings as errors, then the same tests under AddressSanitizer and
# UndefinedBehaviorSanitizer, and a short fuzzing run.
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

# A short fuzzing run of every parser of outside input, from its seeds: a
# crash, a leak or a hang fails the run.
echo "== fuzz"
FUZZ_SECONDS="${FUZZ_SECONDS:-20}" bash scripts/fuzz.sh
