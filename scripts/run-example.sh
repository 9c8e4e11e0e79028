#!/usr/bin/env bash
# Builds the library and runs the example program.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset dev >/dev/null
cmake --build --preset dev --target zalt_lts_example >/dev/null
build/dev/examples/zalt_lts_example
