#!/usr/bin/env bash
# Runs clang-tidy over every C++ source of the tree (library, tests, examples,
# benchmarks, fuzz targets and tools) with the checks of the nearest
# .clang-tidy, every finding an error.
#   scripts/tidy.sh [build-dir]
# The library, tests, examples and tools take their compile commands from the
# build directory (default build/dev, the dev preset's), configured first when
# it has none. The benchmarks and fuzz targets are built only by their own
# presets, so their compile commands come from build/tidy, configured here
# with clang and without building anything.
set -euo pipefail
cd "$(dirname "$0")/.."

build_dir=${1:-build/dev}
extra_dir=build/tidy
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

mapfile -t sources < <(git ls-files 'src/*.cpp' 'tests/*.cpp' 'examples/*.cpp' 'tools/*.cpp')
mapfile -t extra_sources < <(git ls-files 'bench/*.cpp' 'fuzz/*.cpp')
if [ ${#extra_sources[@]} -gt 0 ]; then
  cmake -S . -B "$extra_dir" -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_EXPORT_COMPILE_COMMANDS=ON \
    -DZALT_LTS_BUILD_TESTS=OFF -DZALT_LTS_BUILD_EXAMPLES=OFF -DZALT_LTS_INSTALL=OFF \
    -DZALT_LTS_BUILD_BENCHMARKS=ON -DZALT_LTS_BUILD_FUZZERS=ON >/dev/null
fi
echo "clang-tidy: $((${#sources[@]} + ${#extra_sources[@]})) sources"

log=$(mktemp)
trap 'rm -f "$log"' EXIT
status=0
# Two at a time: the CI machine has two cores. The package test's consumer is
# a project of its own, configured only by that test: it has no compile command.
run() {
  local dir=$1
  shift
  printf '%s\n' "$@" | grep -v '^tests/package/' |
    xargs -r -P 2 -n 1 "$tidy" -p "$dir" --quiet --warnings-as-errors='*' >>"$log" 2>&1 || status=$?
}
run "$build_dir" "${sources[@]}"
[ ${#extra_sources[@]} -gt 0 ] && run "$extra_dir" "${extra_sources[@]}"
grep -v -E '^[0-9]+ warnings?( and [0-9]+ errors?)? generated\.$' "$log" || true
if [ "$status" -ne 0 ] || grep -q -E ': (warning|error):' "$log"; then
  echo "clang-tidy: FAILED (findings above)" >&2
  exit 1
fi
echo "clang-tidy: clean"
