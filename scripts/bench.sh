#!/usr/bin/env bash
# Builds the benchmarks (Release), runs all of them once and writes, into
# RESULTS_DIR (default build/bench-results):
#   results.md     the tables of docs/performance.md
#   results.json   every run as Google Benchmark reports it
#   text-cost.png  text lookups against the store size, beside the floor
#   load-cost.png  loading a catalogue in one call and in calls of a few texts
#   machine.txt    the processor and the compiler the numbers come from
# Takes a few minutes on two cores; run it on a quiet machine.
#   scripts/bench.sh [RESULTS_DIR] [Google Benchmark flags...]
set -euo pipefail
cd "$(dirname "$0")/.."

results_dir=${1:-build/bench-results}
shift || true

scripts/setup.sh --bench
cmake --preset bench
cmake --build --preset bench
mkdir -p "$results_dir"

compiler=$(sed -n 's/^CMAKE_CXX_COMPILER:[A-Z]*=//p' build/bench/CMakeCache.txt)
{
  lscpu
  echo
  "$compiler" --version | head -n 1
  echo "kernel $(uname -r), $(date -u '+%Y-%m-%d %H:%M UTC')"
  # Load from other work on the machine shows up in every number: keep it beside them.
  echo "load average before the run: $(cut -d' ' -f1-3 /proc/loadavg)"
} >"$results_dir/machine.txt"

build/bench/bench/zalt_lts_bench --results_dir="$results_dir" \
  --benchmark_out="$results_dir/results.json" --benchmark_out_format=json "$@"
echo "load average after the run: $(cut -d' ' -f1-3 /proc/loadavg)" >>"$results_dir/machine.txt"
bench/plot.sh "$results_dir"
