#!/bin/sh
# full-file-system.sh <tool> <catalogue>
# On a file system that fills up while pseudo writes, the earlier output stays
# byte for byte and no part of the new one is left. Runs in a user and mount
# namespace of its own with a small tmpfs; where the system allows neither,
# the test is skipped (exit 77).
tool=$1
catalogue=$2
mountpoint=$(mktemp -d) || exit 1
trap 'rmdir "$mountpoint"' EXIT
unshare -rm sh -c 'mount -t tmpfs -o size=12k none "$1"' sh "$mountpoint" 2>/dev/null || exit 77
exec unshare -rm sh -c '
  set -e
  mount -t tmpfs -o size=12k none "$3"
  head -c 9000 /dev/zero | tr "\0" x > "$3/out.xml"
  cp "$3/out.xml" /tmp/zalt-earlier-output.$$
  status=0
  "$1" pseudo --from en-US --to en-XA "$2" -o "$3/out.xml" 2>/tmp/zalt-errors.$$ || status=$?
  [ "$status" -eq 2 ] || { echo "pseudo exited with $status, expected 2"; exit 1; }
  grep -q "cannot write $3/out.xml: No space left on device" /tmp/zalt-errors.$$ || { cat /tmp/zalt-errors.$$; exit 1; }
  cmp "$3/out.xml" /tmp/zalt-earlier-output.$$ || { echo "the earlier output changed"; exit 1; }
  rm /tmp/zalt-earlier-output.$$ /tmp/zalt-errors.$$
  [ "$(ls -A "$3")" = "out.xml" ] || { ls -A "$3"; echo "a temporary file is left"; exit 1; }
' sh "$tool" "$catalogue" "$mountpoint"
