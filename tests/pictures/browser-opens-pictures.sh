#!/bin/sh
# The pictures of a catalogue as a reviewer opens them: zalt-lts-catalogue
# display --pictures-all writes them, a headless browser loads index.html,
# whose script counts the pictures that loaded with a size into the title,
# and takes a screenshot of the page. Skipped (77) without the browser.
#
#   browser-opens-pictures.sh TOOL PROFILE CATALOGUE WORK   (WORK absolute)
set -eu
browser=/usr/bin/chromium
if [ ! -x "$browser" ]; then
  echo "skipped: no $browser to open the pictures in (Debian's chromium installs it)"
  exit 77
fi
tool=$1 profile=$2 catalogue=$3 work=$4
rm -rf "$work"
mkdir -p "$work"

status=0
"$tool" display --profile "$profile" "$catalogue" --pictures "$work/pictures" --pictures-all \
  >"$work/display.txt" 2>&1 || status=$?
if [ "$status" -gt 1 ]; then
  echo "display exited with $status:"
  cat "$work/display.txt"
  exit 1
fi
pictures=$(find "$work/pictures" -name '*.png' | wc -l)
if [ "$pictures" -eq 0 ]; then
  echo "display --pictures-all wrote no picture"
  exit 1
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
