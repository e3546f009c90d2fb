#!/usr/bin/env bash
# Installs everything the project needs to build, test, fuzz and benchmark on
# Debian. Safe to run again: packages already present are left alone.
set -euo pipefail

packages=(
  build-essential cmake ninja-build clang libclang-rt-14-dev pkg-config
  libgtest-dev libgmock-dev libbenchmark-dev
  libpugixml-dev nlohmann-json3-dev libzip-dev libzstd-dev zlib1g-dev libxml2-utils
  libgumbo-dev libre2-dev libstb-dev libutf8proc-dev libcli11-dev
  nodejs chromium glslang-tools aapt
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ "${#missing[@]}" -gt 0 ]; then
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# Consumers of the generated style sheets, used by the end-to-end tests.
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
if [ -f "$here/tests/e2e/package.json" ] && [ ! -d "$here/tests/e2e/node_modules" ]; then
  (cd "$here/tests/e2e" && npm install --no-audit --no-fund --silent)
fi

# Parsers for the generated Swift and Kotlin sources. The grammars carry native
# add-ons, built against the machine's own Node.js headers.
if [ -f "$here/tests/native/package.json" ] && [ ! -d "$here/tests/native/node_modules/tree-sitter" ]; then
  (cd "$here/tests/native" &&
    npm install --no-audit --no-fund --silent --ignore-scripts --legacy-peer-deps &&
    npm_config_nodedir=/usr npm rebuild tree-sitter tree-sitter-kotlin tree-sitter-swift)
fi
