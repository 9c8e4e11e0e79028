#!/usr/bin/env bash
# Plants the faults of scripts/mutations.txt in the library one at a time and
# tells for each whether the test suite catches it; the score comes last.
#   scripts/mutate.sh [NAME-REGEX]
# Only faults whose name matches NAME-REGEX are planted (default: all).
#
# The working tree is never touched: its tracked and new files are copied to a
# scratch directory (MUTATE_DIR, default a fresh temporary one, removed at the
# end; a given MUTATE_DIR keeps its build between runs), built there once with
# the dev preset minus warnings-as-errors (a fault may leave a variable unused),
# and rebuilt incrementally with two jobs after each fault. A fault counts as
# caught when a test fails or times out. The package test is left out: it is
# slow and checks the installation, which no fault here changes.
#
# Faults marked "same:" in the list change no behaviour; they are planted and
# reported, but the score counts only the others.
set -euo pipefail
cd "$(dirname "$0")/.."

list=scripts/mutations.txt
filter=${1:-.}
exclude='^(PackageConsumer|GuideBuilds)$'
per_fault_timeout=600
started=$(date +%s)

scratch=${MUTATE_DIR:-}
if [ -z "$scratch" ]; then
  scratch=$(mktemp -d "${TMPDIR:-/tmp}/zalt-mutate.XXXXXX")
  trap 'rm -rf "$scratch"' EXIT
fi
mkdir -p "$scratch"
build="$scratch/build/dev"

# Tracked files as they are now, plus new files not ignored. Only the build
# directory of an earlier copy survives; every file gets a fresh timestamp so
# that no object built from a planted fault outlives it.
find "$scratch" -mindepth 1 -maxdepth 1 ! -name build -exec rm -rf {} +
git ls-files -z --cached --others --exclude-standard |
  while IFS= read -r -d '' file; do [ -f "$file" ] && printf '%s\0' "$file"; done |
  tar --null -T - -cf - | tar -xmf - -C "$scratch"

log="$scratch/mutate.log"
echo "mutate: building the unchanged tree in $scratch"
(cd "$scratch" && cmake --preset dev -DZALT_LTS_WARNINGS_AS_ERRORS=OFF && cmake --build "$build" -j 2) \
  >"$log" 2>&1 || { cat "$log" >&2; echo "mutate: the unchanged tree does not build" >&2; exit 1; }

run_suite() {
  timeout "$per_fault_timeout" ctest --test-dir "$build" -j 2 --timeout 60 -E "$exclude" \
    --output-on-failure >>"$log" 2>&1
}
run_suite || { cat "$log" >&2; echo "mutate: the unchanged tree fails its tests" >&2; exit 1; }

# Replaces the one occurrence of $2 in file $1 by $3; fails unless there is exactly one.
plant() {
  local file=$1 original=$2 replacement=$3 content
  content=$(cat "$file"; printf x)
  content=${content%x}
  local after=${content#*"$original"}
  if [ "$after" = "$content" ]; then
    echo "snippet not found"
    return 1
  fi
  if [[ "$after" == *"$original"* ]]; then
    echo "snippet not unique"
    return 1
  fi
  printf '%s' "${content/"$original"/"$replacement"}" >"$file"
}

caught=0 missed=0 same=0 broken=0
missed_names=() broken_names=()

# Plants one parsed fault, rebuilds, runs the suite, restores the file, reports.
try_fault() {
  local name=$1 file=$2 original=$3 replacement=$4 why=$5
  [[ "$name" =~ $filter ]] || return 0
  local target="$scratch/$file" backup="$scratch/.original"
  if [ ! -f "$target" ]; then
    printf '%-8s %s (no file %s)\n' BROKEN "$name" "$file"
    broken=$((broken + 1)); broken_names+=("$name"); return 0
  fi
  cp -p "$target" "$backup"
  local problem verdict
  if ! problem=$(plant "$target" "$original" "$replacement"); then
    verdict=BROKEN
  else
    echo "== $name" >>"$log"
    if ! timeout "$per_fault_timeout" cmake --build "$build" -j 2 >>"$log" 2>&1; then
      verdict=BROKEN problem="does not build"
    elif run_suite; then
      verdict=MISSED
    else
      verdict=CAUGHT
    fi
  fi
  # A fresh timestamp makes the next build recompile the restored file.
  cp "$backup" "$target"
  touch "$target"

  if [ -n "$why" ]; then
    if [ "$verdict" = CAUGHT ]; then
      printf '%-8s %s (marked as changing no behaviour, yet a test fails)\n' CAUGHT "$name"
    else
      printf '%-8s %s (%s)\n' SAME "$name" "$why"
    fi
    [ "$verdict" = BROKEN ] && { broken=$((broken + 1)); broken_names+=("$name"); }
    [ "$verdict" != BROKEN ] && same=$((same + 1))
    return 0
  fi
  case "$verdict" in
    CAUGHT) caught=$((caught + 1)); printf '%-8s %s\n' CAUGHT "$name" ;;
    MISSED) missed=$((missed + 1)); missed_names+=("$name"); printf '%-8s %s\n' MISSED "$name" ;;
    BROKEN) broken=$((broken + 1)); broken_names+=("$name"); printf '%-8s %s (%s)\n' BROKEN "$name" "$problem" ;;
  esac
}

# The list: blocks separated by blank lines; "#" lines are comments.
#   name: <short name>
#   file: <path below the repository root>
#   - <original text>      (several "-" lines make a multi-line snippet)
#   + <replacement text>   (several "+" lines likewise; "+" alone is an empty line)
#   same: <why the fault changes no behaviour>   (optional)
name='' file='' original='' replacement='' why='' has_original=false has_replacement=false
flush() {
  if [ -n "$name" ]; then
    try_fault "$name" "$file" "$original" "$replacement" "$why" </dev/null
  fi
  name='' file='' original='' replacement='' why='' has_original=false has_replacement=false
}
while IFS= read -r line || [ -n "$line" ]; do
  case "$line" in
    '#'*) ;;
    '') flush ;;
    'name: '*) name=${line#name: } ;;
    'file: '*) file=${line#file: } ;;
    'same: '*) why=${line#same: } ;;
    '-'*)
      text=${line#-}; text=${text# }
      if $has_original; then original+=$'\n'"$text"; else original=$text; has_original=true; fi ;;
    '+'*)
      text=${line#+}; text=${text# }
      if $has_replacement; then replacement+=$'\n'"$text"; else replacement=$text; has_replacement=true; fi ;;
    *) echo "mutate: cannot read this line of $list: $line" >&2; exit 2 ;;
  esac
done <"$list"
flush

elapsed=$(($(date +%s) - started))
echo
[ ${#missed_names[@]} -gt 0 ] && echo "missed: ${missed_names[*]}"
[ ${#broken_names[@]} -gt 0 ] && echo "broken entries (fix the list): ${broken_names[*]}"
counted=$((caught + missed))
percent=$((counted > 0 ? 100 * caught / counted : 0))
echo "took $((elapsed / 60)) min $((elapsed % 60)) s; $same planted faults change no behaviour"
echo "score: $caught of $counted faults caught ($percent%)"
[ "$broken" -eq 0 ]
