#!/usr/bin/env bash
# Builds the benchmarks (optimised) and runs each, printing its figures.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
bash scripts/install-deps.sh
cmake --preset bench > /dev/null
cmake --build --preset bench -j "$(nproc)"
for bench in build/bench/bench/*; do
  if [ -f "$bench" ] && [ -x "$bench" ]; then
    echo "== $(basename "$bench")"
    "$bench"
  fi
done
