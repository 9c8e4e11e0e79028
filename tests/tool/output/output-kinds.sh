#!/bin/sh
# output-kinds.sh <case> <tool> <catalogue> <its pseudo file> <scratch directory>
# An output that is not a plain file keeps what it is, and only its content changes:
#   fifo     a FIFO gets every byte of the output, read as it comes, and stays a FIFO
#   device   a character device (a copy of the null device's numbers) is written to
#            and stays a device; one that fails to write (the full device's) is exit 2
#   link     a chain of symbolic links stays; the file at its end, in another
#            directory, gets the content, and no temporary file is left anywhere
#   mode     an existing 0600 output stays 0600; a new one gets the usual mode
#   gone     standard output is a pipe whose reader has gone: exit 2 with a message,
#            never a death by SIGPIPE that a build would read as a crash
# Exit 77 skips the case where the system does not allow it.
set -u
case=$1 tool=$2 catalogue=$3 expected=$4 work=$5

fail() {
  echo "$case: $*"
  exit 1
}

pseudo() {
  "$tool" pseudo --from en-US --to en-XA "$catalogue" -o "$1" 2>"$work/errors"
}

require_pseudo() {
  pseudo "$1" || fail "pseudo -o $1 exited with $?: $(cat "$work/errors")"
}

require_expected() {
  cmp "$1" "$expected" >/dev/null || fail "$1 is not the pseudo catalogue"
}

rm -rf "$work"
mkdir -p "$work" || exit 1

case $case in
fifo)
  mkfifo "$work/pipe" || exit 77
  # A tool that replaces the FIFO never opens it: the reader must not wait for ever.
  timeout 60 cat "$work/pipe" >"$work/received" &
  reader=$!
  pseudo "$work/pipe"
  status=$?
  [ -p "$work/pipe" ] || { kill "$reader"; fail "the FIFO is gone"; }
  wait "$reader" || fail "the reader got no end of file"
  [ "$status" -eq 0 ] || fail "pseudo exited with $status: $(cat "$work/errors")"
  require_expected "$work/received"
  ;;
device)
  mknod "$work/null" c 1 3 2>/dev/null || { echo "mknod is not permitted here"; exit 77; }
  mknod "$work/full" c 1 7 || exit 1
  require_pseudo "$work/null"
  [ -c "$work/null" ] || fail "the device was replaced"
  pseudo "$work/full"
  status=$?
  [ "$status" -eq 2 ] || fail "pseudo -o a full device exited with $status, expected 2"
  grep -q "cannot write $work/full: No space left on device" "$work/errors" || fail "$(cat "$work/errors")"
  [ -c "$work/full" ] || fail "the full device was replaced"
  ;;
link)
  mkdir "$work/links" "$work/files"
  echo "earlier" >"$work/files/out.xml"
  ln -s ../files/out.xml "$work/links/first.xml"
  ln -s first.xml "$work/links/out.xml"
  require_pseudo "$work/links/out.xml"
  [ -L "$work/links/out.xml" ] && [ -L "$work/links/first.xml" ] || fail "a link was replaced"
  [ "$(readlink "$work/links/first.xml")" = ../files/out.xml ] || fail "the link was changed"
  require_expected "$work/files/out.xml"
  [ "$(ls -A "$work/links")" = "$(printf 'first.xml\nout.xml')" ] || fail "left in links: $(ls -A "$work/links")"
  [ "$(ls -A "$work/files")" = out.xml ] || fail "left beside the target: $(ls -A "$work/files")"
  ;;
mode)
  umask 022
  echo "earlier" >"$work/kept.xml"
  chmod 600 "$work/kept.xml"
  require_pseudo "$work/kept.xml"
  require_expected "$work/kept.xml"
  [ "$(stat -c %a "$work/kept.xml")" = 600 ] || fail "0600 became $(stat -c %a "$work/kept.xml")"
  require_pseudo "$work/new.xml"
  [ "$(stat -c %a "$work/new.xml")" = 644 ] || fail "a new file got $(stat -c %a "$work/new.xml")"
  ;;
gone)
  command -v python3 >/dev/null || { echo "no python3 to make a pipe without a reader"; exit 77; }
  # The child gets SIGPIPE's default action back (subprocess restores it).
  status=$(python3 -c 'import os, subprocess, sys
reader, writer = os.pipe()
os.close(reader)
print(subprocess.run(sys.argv[1:], stdout=writer).returncode)' \
    "$tool" pseudo --from en-US --to en-XA "$catalogue" -o - 2>"$work/errors")
  [ "$status" = 2 ] || fail "pseudo -o - into a closed pipe ended with $status: $(cat "$work/errors")"
  grep -q "cannot write to standard output" "$work/errors" || fail "$(cat "$work/errors")"
  ;;
*)
  fail "no such case"
  ;;
esac
