#!/usr/bin/env bash
# Builds the fuzz targets with the fuzz preset and runs each for a bounded
# time, two at a time, from a copy of its seed corpus in fuzz/corpus/<target>/.
#   scripts/fuzz.sh [seconds-per-target]      (default 45)
# Environment: FUZZ_BUILD_DIR (default build/fuzz).
# Prints executions and executions per second for each target. On a crash,
# leak, timeout or sanitizer report it prints the report and a hex dump of the
# reproducer (also kept in fuzz/artifacts/) and fails.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-45}
build_dir=${FUZZ_BUILD_DIR:-build/fuzz}
artifacts=fuzz/artifacts
work=$build_dir/fuzz-runs

if ! command -v clang++ >/dev/null; then
  echo "fuzz.sh: clang++ not found; run scripts/setup.sh --ci" >&2
  exit 1
fi

cmake --preset fuzz -B "$build_dir" >/dev/null
cmake --build "$build_dir" -j 2

mapfile -t targets < <(find fuzz/corpus -mindepth 1 -maxdepth 1 -type d -printf '%f\n' | sort)
rm -rf "$work"
mkdir -p "$work" "$artifacts"

export ASAN_OPTIONS=halt_on_error=1:detect_leaks=1:abort_on_error=0
export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1

run_target() {
  local target=$1 binary=$build_dir/fuzz/$1
  if [ ! -x "$binary" ]; then
    echo "fuzz.sh: no executable for $target (expected $binary)" >"$work/$target.log"
    return 1
  fi
  mkdir -p "$work/$target/corpus"
  cp fuzz/corpus/"$target"/* "$work/$target/corpus/"
  "$binary" "$work/$target/corpus" -max_total_time="$seconds" -timeout=25 -rss_limit_mb=4096 \
    -error_exitcode=77 -timeout_exitcode=78 -print_final_stats=1 \
    -artifact_prefix="$artifacts/$target-" >"$work/$target.log" 2>&1
}

report() {
  local target=$1 status=$2 log=$work/$1.log
  if [ "$status" -eq 0 ]; then
    local runs rate
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log")
    echo "fuzz: $target passed: $runs executions in ${seconds}s, $rate exec/s"
    return 0
  fi
  echo "fuzz: $target FAILED (exit $status); its log:"
  tail -n 60 "$log"
  local artifact
  for artifact in $(sed -n 's/.*Test unit written to \(.*\)$/\1/p' "$log"); do
    echo "fuzz: reproducer $artifact (run: $build_dir/fuzz/$target $artifact):"
    od -A x -t x1z -v "$artifact"
  done
  return 1
}

failed=0
# Two at a time: the CI machine has two cores.
for ((i = 0; i < ${#targets[@]}; i += 2)); do
  pids=()
  for target in "${targets[@]:i:2}"; do
    run_target "$target" &
    pids+=($!)
  done
  j=0
  for target in "${targets[@]:i:2}"; do
    status=0
    wait "${pids[$j]}" || status=$?
    report "$target" "$status" || failed=1
    j=$((j + 1))
  done
done

if [ "$failed" -ne 0 ]; then
  echo "fuzz: FAILED" >&2
  exit 1
fi
echo "fuzz: all ${#targets[@]} targets passed"
