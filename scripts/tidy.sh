#!/usr/bin/env bash
# Runs clang-tidy over every library source with the checks of .clang-tidy,
# every finding an error.
#   scripts/tidy.sh [build-dir]
# The compile commands come from the build directory (default build/dev, the
# dev preset's); it is configured first when it has none.
set -euo pipefail
cd "$(dirname "$0")/.."

build_dir=${1:-build/dev}
tidy=$(command -v clang-tidy-14 || command -v clang-tidy || true)
if [ -z "$tidy" ]; then
  echo "tidy.sh: clang-tidy not found; run scripts/setup.sh --ci" >&2
  exit 1
fi
if [ ! -f "$build_dir/compile_commands.json" ]; then
  if [ "$build_dir" != build/dev ]; then
    echo "tidy.sh: $build_dir has no compile_commands.json" >&2
    exit 1
  fi
  cmake --preset dev >/dev/null
fi

mapfile -t sources < <(git ls-files 'src/*.cpp')
echo "clang-tidy: ${#sources[@]} sources"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
status=0
# Two at a time: the CI machine has two cores.
printf '%s\n' "${sources[@]}" |
  xargs -P 2 -n 1 "$tidy" -p "$build_dir" --quiet --warnings-as-errors='*' >"$log" 2>&1 || status=$?
grep -v -E '^[0-9]+ warnings?( and [0-9]+ errors?)? generated\.$' "$log" || true
if [ "$status" -ne 0 ] || grep -q -E ': (warning|error):' "$log"; then
  echo "clang-tidy: FAILED (findings above)" >&2
  exit 1
fi
echo "clang-tidy: clean"
