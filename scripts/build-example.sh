#!/usr/bin/env bash
# Sets everything up, builds the tool and runs the main job on the bundled
# example: every build group of examples/Colors.tintwork, then its contrast tests.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
bash scripts/install-deps.sh
cmake --preset release > /dev/null
cmake --build --preset release -j "$(nproc)" --target TintWorkCLI tintwork_templates
./build/release/TintWorkCLI -b examples/Colors.tintwork -o out/
./build/release/TintWorkCLI -t examples/Colors.tintwork || echo "(exit status $?: the number of failed test groups)"
