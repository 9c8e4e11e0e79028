#!/bin/sh
# The pictures of a catalogue as a reviewer opens them: zalt-lts-catalogue
# display --pictures draws one for each text and area with a finding, and
# --pictures-all one for every text shown; a headless browser loads the
# latter's index.html, whose script counts the pictures that loaded with a
# size into the title, and takes a screenshot of the page. Without the
# browser the rest is skipped (77).
#
#   browser-opens-pictures.sh TOOL PROFILE CATALOGUE WORK   (WORK absolute)
set -eu
browser=/usr/bin/chromium
tool=$1 profile=$2 catalogue=$3 work=$4
rm -rf "$work"
mkdir -p "$work"

# Writes the pictures into $work/$1 with the options that follow; prints how many.
draw() {
  into=$1
  shift
  status=0
  "$tool" display --profile "$profile" "$catalogue" --pictures "$work/$into" "$@" >"$work/$into.txt" 2>&1 ||
    status=$?
  if [ "$status" -gt 1 ]; then
    echo "display exited with $status:" >&2
    cat "$work/$into.txt" >&2
    exit 1
  fi
  find "$work/$into" -name '*.png' | wc -l
}

found=$(draw found)
# One per place in the catalogue and area: "FILE:LINE:COLUMN: area 'NAME' ...".
expected=$(grep -o "^[^ ]*: area '[^']*'" "$work/found.txt" | sort -u | wc -l)
if [ "$found" -ne "$expected" ] || [ "$found" -eq 0 ]; then
  echo "display --pictures wrote $found pictures for $expected texts with findings"
  exit 1
fi

pictures=$(draw pictures --pictures-all)
shown=$(sed -n 's/.* \([0-9][0-9]*\) texts\{0,1\} shown in .*/\1/p' "$work/pictures.txt")
if [ "$pictures" != "$shown" ]; then
  echo "display --pictures-all wrote $pictures pictures of $shown texts shown"
  exit 1
fi

if [ ! -x "$browser" ]; then
  echo "skipped: no $browser to open the pictures in (Debian's chromium installs it)"
  exit 77
fi

# A fresh profile each time, and nothing that reaches beyond this machine.
open_page() {
  timeout 60 "$browser" --headless --no-sandbox --disable-gpu --disable-quic --no-first-run \
    --disable-background-networking --disable-component-update --disable-sync \
    --user-data-dir="$(mktemp -d "$work/browser.XXXXXX")" --virtual-time-budget=5000 \
    "$@" "file://$work/pictures/index.html" 2>>"$work/browser.log"
}

open_page --dump-dom >"$work/page.html"
expected="<title>$pictures of $pictures pictures loaded</title>"
if ! grep -q "$expected" "$work/page.html"; then
  echo "expected $expected in the page as the browser left it, found:"
  grep -o '<title>.*</title>' "$work/page.html" || echo "no title"
  exit 1
fi

open_page --window-size=1000,800 --screenshot="$work/screenshot.png" >/dev/null
signature=$(od -An -tx1 -N8 "$work/screenshot.png" 2>/dev/null | tr -d ' \n')
if [ "$signature" != "89504e470d0a1a0a" ]; then
  echo "the browser's screenshot $work/screenshot.png is no PNG file"
  exit 1
fi
echo "$pictures of $pictures pictures loaded; screenshot $work/screenshot.png"
