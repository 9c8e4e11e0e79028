#!/bin/sh
# wine-run.sh <dll-dirs> <program.exe> [args...]
# Runs a Windows program under Wine with the colon-separated <dll-dirs> on its
# DLL search path; Wine's own diagnostics stay off unless WINEDEBUG is set.
set -eu
dll_dirs=$1
shift
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEPATH="$(printf '%s' "$dll_dirs" | tr ':' ';')${WINEPATH:+;$WINEPATH}"
exec wine "$@"
