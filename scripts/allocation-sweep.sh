#!/usr/bin/env bash
# Runs zalt-lts-catalogue's commands on the example catalogue with one
# allocation failing, each in turn, and lists every run that does not end as a
# program out of memory should. Not part of CI: it runs the tool thousands of
# times (some minutes per command) and needs glibc's allocator on Linux.
#   scripts/allocation-sweep.sh [build-dir]     (default build/dev, built already)
# Environment: SWEEP_RUNS, the most runs per command (default 3000: where a
# command makes more allocations, the failing ones are spread evenly over
# them); SWEEP_JOBS, runs at once (default 2); SWEEP_COMMANDS, a regular
# expression that picks commands by name (default all).
#
# scripts/FailingAllocation.c, preloaded, counts the allocations from the start
# of main and fails the one numbered FAILING_ALLOCATION. A first run of each
# command fails none and gives its output, exit status and count. A run with a
# failing allocation is fine when its standard output, standard error, exit
# status and written file are the first run's, or when it exits with 2 and a
# message on standard error; anything else (a signal, an abort, exit 0 or 1
# with other output) is a failure, listed with the command line that repeats
# it. The exit status is 1 where there is one.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD

build=${1:-build/dev}
tool=$root/$build/tools/zalt-lts-catalogue/zalt-lts-catalogue
[ -x "$tool" ] || { echo "allocation-sweep: no $tool; build the tool first" >&2; exit 2; }
runs=${SWEEP_RUNS:-3000}
jobs=${SWEEP_JOBS:-2}
pick=${SWEEP_COMMANDS:-.}

work=$(mktemp -d "${TMPDIR:-/tmp}/zalt-allocation-sweep.XXXXXX")
trap 'rm -rf "$work"' EXIT
preload=$work/FailingAllocation.so
cc -shared -fPIC -O2 -o "$preload" scripts/FailingAllocation.c -ldl

examples=$root/examples/catalogue
catalogues="$examples/walkthrough.xml $examples/mistakes.xml"
# The export has findings (mistakes.xml holds them) and exits with 1.
"$tool" xliff export --from en-US --to de-DE $catalogues -o "$work/de.xlf" >/dev/null 2>&1 || true
[ -s "$work/de.xlf" ] || { echo "allocation-sweep: the XLIFF export wrote nothing" >&2; exit 2; }

# name|arguments (split at blanks; "written" is the file a command writes).
commands=(
  "check|check $catalogues"
  "check-json|check --json $catalogues"
  "coverage|coverage --mdib $examples/monitor-mdib.xml $catalogues"
  "xliff-import|xliff import $work/de.xlf -o written"
  "pseudo|pseudo --from en-US --to en-XA $catalogues"
  "fit|fit $catalogues --lang de-DE --width m --lines 2"
  "stats|stats $catalogues"
)

# Runs the tool in directory $1 with allocation $2 failing (0: none) and
# arguments $3...; leaves out, err, status and written there.
run_tool() {
  local dir=$1 failing=$2
  shift 2
  mkdir -p "$dir"
  (cd "$dir" && FAILING_ALLOCATION=$failing FAILING_ALLOCATION_COUNT=count LD_PRELOAD=$preload \
    "$tool" "$@" >out 2>err </dev/null; echo $? >status) || true
}

# One run with allocation $2 failing, judged against the first run in
# $work/$1/0; prints nothing where the run is fine, else one line.
judge() {
  local name=$1 failing=$2 dir=$work/$1/$2 expected=$work/$1/0
  shift 2
  run_tool "$dir" "$failing" "$@"
  local status
  status=$(cat "$dir/status")
  if cmp -s "$dir/out" "$expected/out" && cmp -s "$dir/err" "$expected/err" &&
    [ "$status" = "$(cat "$expected/status")" ] &&
    { [ ! -e "$expected/written" ] && [ ! -e "$dir/written" ] ||
      cmp -s "$dir/written" "$expected/written"; }; then
    rm -rf "$dir"
    return 0
  fi
  if [ "$status" = 2 ] && [ -s "$dir/err" ]; then
    echo "stopped $failing $(head -c 200 "$dir/err" | head -n 1)"
    rm -rf "$dir"
    return 0
  fi
  local what="exit $status"
  [ "$status" -gt 128 ] && what="signal $((status - 128))"
  echo "FAILURE $failing $what: $(head -c 300 "$dir/err" | tr '\n' ' ')"
}
export -f run_tool judge
export work tool preload

failures=0
for entry in "${commands[@]}"; do
  name=${entry%%|*}
  [[ "$name" =~ $pick ]] || continue
  read -r -a arguments <<<"${entry#*|}"
  run_tool "$work/$name/0" 0 "${arguments[@]}"
  total=$(cat "$work/$name/0/count" 2>/dev/null || echo 0)
  [ "$total" -gt 0 ] || { echo "allocation-sweep: $name counted no allocation" >&2; exit 2; }
  # Allocation numbers 1..total, or `runs` of them spread evenly.
  count=$((total < runs ? total : runs))
  log=$work/$name.log
  awk -v total="$total" -v count="$count" 'BEGIN {
    for (i = 0; i < count; ++i) print (count == 1 ? 1 : 1 + int(i * (total - 1) / (count - 1)))
  }' | xargs -P "$jobs" -I{} bash -c 'judge "$0" {} "${@}" 2>/dev/null' "$name" "${arguments[@]}" >"$log"
  stopped=$(grep -c '^stopped' "$log" || true)
  failed=$(grep -c '^FAILURE' "$log" || true)
  printf '%-13s %6d allocations, %5d runs: %5d as without failure, %5d exit 2 with a message, %4d failures\n' \
    "$name" "$total" "$count" "$((count - stopped - failed))" "$stopped" "$failed"
  # The messages of the runs that stopped, each with how many said it.
  grep '^stopped' "$log" | cut -d' ' -f3- | sort | uniq -c | sed "s|$work|WORK|g; s|^|    |" || true
  sort -t' ' -k2,2n "$log" | grep '^FAILURE' | sed "s|$work|WORK|g; s|^FAILURE|  $name: allocation|" || true
  failures=$((failures + failed))
done

if [ "$failures" -gt 0 ]; then
  echo "allocation-sweep: $failures failures; repeat one with:"
  echo "  FAILING_ALLOCATION=N LD_PRELOAD=<cc -shared -fPIC scripts/FailingAllocation.c -ldl> $tool ARGS"
  exit 1
fi
