#!/usr/bin/env bash
# Builds everything with the developer preset (warnings as errors) and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset dev
cmake --build --preset dev
ctest --preset dev
