#!/usr/bin/env bash
# Formats the tracked C++ files with .clang-format.
#   scripts/format.sh           rewrites every file in place
#   scripts/format.sh --check   changes nothing; lists the files that are not
#                               formatted, with the diff, and fails if any
set -euo pipefail
cd "$(dirname "$0")/.."

check=false
for arg in "$@"; do
  case "$arg" in
    --check) check=true ;;
    *) echo "format.sh: unknown option $arg" >&2; exit 2 ;;
  esac
done

format=$(command -v clang-format-14 || command -v clang-format || true)
if [ -z "$format" ]; then
  echo "format.sh: clang-format not found; run scripts/setup.sh --ci" >&2
  exit 1
fi

mapfile -t files < <(git ls-files '*.cpp' '*.h')
if ! $check; then
  "$format" -i "${files[@]}"
  exit 0
fi

unformatted=0
for file in "${files[@]}"; do
  if ! "$format" "$file" | diff -u --label "$file" --label "$file (formatted)" "$file" -; then
    unformatted=$((unformatted + 1))
  fi
done
if [ "$unformatted" -ne 0 ]; then
  echo "clang-format: $unformatted of ${#files[@]} files are not formatted; run scripts/format.sh" >&2
  exit 1
fi
echo "clang-format: ${#files[@]} files formatted"
