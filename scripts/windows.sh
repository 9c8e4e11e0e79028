#!/usr/bin/env bash
# Cross-builds the four libraries, the tests and the example as Windows x86-64
# programs and DLLs with MinGW-w64, then runs every test under Wine.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh --windows
cmake --preset windows
cmake --build --preset windows --parallel "$(nproc)"

# The same prefix as the preset's. Creating it takes several seconds; doing it
# once here keeps that out of the first test's time limit. The programs need
# neither Wine's .NET nor its HTML engine, so their installers never start.
export WINEPREFIX="$PWD/build/windows/wine-prefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
trap 'wineserver -k 2>/dev/null || true' EXIT
wineboot -i
ctest --preset windows --parallel "$(nproc)"
