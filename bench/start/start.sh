#!/usr/bin/env bash
# How long the program needs until its window is on screen, beside an empty window with the same libraries.
# usage: start.sh ZAVIK EMPTY_WINDOW [ROUNDS]
set -euo pipefail
zavik=$1 empty=$2 rounds=${3:-9}
work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait 2>/dev/null || true; rm -rf "$work"' EXIT
Xvfb -noreset -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$work/display" 2>/dev/null &
until [ "$(wc -l <"$work/display")" -gt 0 ]; do sleep 0.1; done
DISPLAY=:$(cat "$work/display")
export DISPLAY QT_QPA_PLATFORM=xcb XDG_CONFIG_HOME=$work XDG_RUNTIME_DIR=$work QTWEBENGINE_DISABLE_SANDBOX=1

once() {
  local begin end program
  begin=$(date +%s%N)
  "$1" >/dev/null 2>&1 &
  program=$!
  until xdotool search --onlyvisible --name '^ZAVIK$' >/dev/null 2>&1; do :; done
  end=$(date +%s%N)
  kill "$program"; wait "$program" 2>/dev/null || true
  echo $(((end - begin) / 1000))
}
median() { for _ in $(seq "$rounds"); do once "$1"; done | sort -n | sed -n "$((rounds / 2 + 1))p"; }
once "$zavik" >/dev/null; once "$empty" >/dev/null
a=$(median "$zavik") b=$(median "$empty")
awk -v a="$a" -v b="$b" 'BEGIN { printf "window on screen: zavik %.0f ms, empty window %.0f ms, %.2f x\n", a / 1000, b / 1000, a / b }'
