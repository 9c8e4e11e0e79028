#!/usr/bin/env bash
# Builds the library and runs the example program. Build output is shown only
# when the build fails, so the walkthrough reads on its own.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
if ! log=$( (cmake --preset dev && cmake --build --preset dev --target zalt_lts_example) 2>&1); then
  echo "$log" >&2
  exit 1
fi
build/dev/examples/zalt_lts_example
