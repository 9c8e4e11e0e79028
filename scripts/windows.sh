#!/usr/bin/env bash
# Cross-builds the six libraries, zalt-lts-catalogue, the tests and the
# example as Windows x86-64 programs and DLLs with MinGW-w64, then runs every
# test under Wine. setup.sh --windows also builds the libraries that the
# catalogue and display components link for Windows (scripts/windows-deps.sh).
set -euo pipefail
cd "$(dirname "$0")/.."

# Two jobs at most: the CI machine has two cores, and its budget for this
# stage is measured on them.
jobs=${CMAKE_BUILD_PARALLEL_LEVEL:-2}
[ "$jobs" -le 2 ] || jobs=2
export CMAKE_BUILD_PARALLEL_LEVEL=$jobs

scripts/setup.sh --windows
cmake --preset windows
cmake --build --preset windows

# The configure step only skips the catalogue and display components when it
# cannot find their libraries; here that would pass the stage with their tests
# missing. Naming their targets fails the build when they do not exist.
if ! cmake --build --preset windows --target Zalt_LtsCatalogue Zalt_LtsDisplay zalt-lts-catalogue >/dev/null; then
  echo "windows.sh: the catalogue or display component was not configured (see cmake --preset windows)" >&2
  exit 1
fi

# The same prefix as the preset's. Creating it takes several seconds; doing it
# once here keeps that out of the first test's time limit. The programs need
# neither Wine's .NET nor its HTML engine, so their installers never start.
export WINEPREFIX="$PWD/build/windows/wine-prefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
trap 'wineserver -k 2>/dev/null || true' EXIT
wineboot -i

# One server for the whole run. Left to itself, Wine starts a server with the
# first program and ends it a few seconds after the last, and a test that
# starts while it shuts down loses it ("wine client error: recvmsg: Connection
# reset by peer"). wineboot's server is let end first, since a second server
# for the prefix refuses to start.
wineserver -w
wineserver -p
# Wine's own processes (the service manager and the device drivers' host)
# start with the first program and then live as long as the server, holding
# that program's output open: started by a test, they would keep CTest waiting
# for the end of its output. Started here, they hold nothing CTest reads.
wineboot </dev/null >/dev/null 2>&1
ctest --preset windows --parallel "$jobs"
# The server ends here, not on its own: every test has ended by now.
wineserver -k
wineserver -w
