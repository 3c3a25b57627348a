#!/usr/bin/env bash
# Starts the real program on a sample card under a virtual display and drives it with keys and mouse.
# usage: player.sh ZAVIK SAMPLECARD [FOLDER FOR SCREENSHOTS]
set -euo pipefail
zavik=$1 samplecard=$2 shots=${3:-}
for tool in Xvfb xdotool import ffmpeg; do
  command -v "$tool" >/dev/null || { echo "skipped: $tool is not installed"; exit 77; }
done

work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait 2>/dev/null || true; rm -rf "$work"' EXIT
log=$work/zavik.log

fail() { echo "FAILED: $1" >&2; tail -n 15 "$log" >&2; import -window root "$work/failed.png" 2>/dev/null || true
  [ -z "$shots" ] || cp "$work/failed.png" "$shots/"; exit 1; }
# Waits until the command succeeds; says what it waited for when it never does.
await() { local what=$1; shift; for _ in $(seq 200); do "$@" && return 0; sleep 0.1; done; fail "$what"; }
step() { echo "- $1"; shot=$((shot + 1)); [ -z "$shots" ] || import -window root "$shots/$shot-${1// /-}.png"; }
shot=0

"$samplecard" --seconds 14 "$work/card" >/dev/null
Xvfb -displayfd 3 -screen 0 1600x1000x24 -nolisten tcp 3>"$work/display" 2>/dev/null &
for _ in $(seq 100); do [ "$(wc -l <"$work/display")" -gt 0 ] && break; sleep 0.1; done
DISPLAY=:$(cat "$work/display")
export DISPLAY QT_QPA_PLATFORM=xcb XDG_CONFIG_HOME=$work/config XDG_RUNTIME_DIR=$work XDG_DATA_HOME=$work/data HOME=$work
export LIBGL_ALWAYS_SOFTWARE=1
# The display's and the web engine's own libraries do not stand the strictest checks.
export ASAN_OPTIONS=new_delete_type_mismatch=0
export LSAN_OPTIONS=suppressions=$(dirname "$0")/../leaks.txt:print_suppressions=0
# The page of the map cannot have its own sandbox when root runs this.
[ "$(id -u)" -ne 0 ] || export QTWEBENGINE_DISABLE_SANDBOX=1

mkdir "$work/bin"
printf '#!/bin/sh\necho "$@" >>"%s/opened"\n' "$work" >"$work/bin/xdg-open"
chmod +x "$work/bin/xdg-open"

PATH=$work/bin:$PATH "$zavik" "$work/card" 2>"$log" &
program=$!
window=$(timeout 60 xdotool search --sync --onlyvisible --name '^ZAVIK$' | head -n 1) || fail "no window"
geometry() { xdotool getwindowgeometry --shell "$window"; }
size_is() { eval "$(geometry)"; [ "$WIDTH $HEIGHT" = "$1 $2" ]; }
place() { eval "$(geometry)"; echo "$((X + $1)) $((Y + $2))"; }
move() { xdotool mousemove --sync $(place "$1" "$2"); }
click() { move "$1" "$2"; xdotool click 1; }
key() { xdotool key "$@"; }
logged() { [ "$(grep -c -- "$1" "$log")" -ge "${2:-1}" ]; }
# A hash of a region of the window: WIDTHxHEIGHT+X+Y.
region() { import -window "$window" -crop "$1" +repage rgb:- | md5sum; }
video=560x300+40+80
changes() { local before; before=$(region "$1"); sleep 0.3; [ "$before" != "$(region "$1")" ]; }
rests() { ! changes "$1"; }
differs() { [ "$2" != "$(region "$1")" ]; }

size_is 1020 640 || fail "the window does not start at 1020 x 640"
xdotool windowfocus "$window"
row() { echo $((50 + 32 + 26 + 24 * $1 - 12)); }
listed() { [ "$(import -window "$window" -crop 330x24+676+$(($(row 1) - 12)) +repage png:- | identify -format %k -)" -gt 20 ]; }
await "the list stays empty" listed
step "list"

move 850 "$(row 1)"; xdotool click --repeat 2 --delay 60 1
await "the double click starts nothing" logged 'selectedRow=0'
await "no moving picture" changes $video
step "playing"

key space; await "space does not pause" rests $video
step "paused"
key space; await "space does not resume" changes $video

before=$(region 640x20+20+566); key Right
await "the jump is not logged" logged 'remainingTime.stringValue=-'
await "the slider does not follow the jump" differs 640x20+20+566 "$before"
key Left
before=$(region 60x26+470+594); key 2
await "the speed label does not change" differs 60x26+470+594 "$before"
key 1; await "the speed label does not return" eval '[ "$before" = "$(region 60x26+470+594)" ]'
before=$(region 120x26+20+594); key Up
await "the volume slider does not move" differs 120x26+20+594 "$before"
click 300 575; await "a click on the slider does not seek" logged 'position slider moved'
step "seeked"

key plus; await "plus does not grow the window" size_is 1224 768
key minus; await "minus does not shrink it" size_is 1020 640
key f; await "F is not full screen" size_is 1600 1000
await "the bar does not come" eval '[ "$(import -window "$window" -crop 300x20+600+970 +repage png:- | identify -format %k -)" -lt 40 ]'
sleep 0.5; step "full screen"
key Escape; await "Escape does not leave full screen" size_is 1020 640

before=$(region 300x400+690+120); click 930 66
await "the map does not come" differs 300x400+690+120 "$before"
sleep 2; step "map"
click 760 66; await "the list does not return" listed

before=$(region 300x30+360+10); key Next
await "Page Down does not play the next recording" differs 300x30+360+10 "$before"
await "the next recording does not move" changes $video
key ctrl+s
panel=$(timeout 20 xdotool search --sync --onlyvisible --name '^Save Settings$' | head -n 1) || fail "no save panel"
step "save panel"
xdotool windowfocus --sync "$panel"; key ctrl+a; xdotool type "$work/picture.png"; key Return
await "the capture is not saved" test -s "$work/picture.png"
[ "$(head -c 3 "$work/picture.png" | od -An -tx1 | tr -d ' ')" = ffd8ff ] || fail "the capture is not the picture of the frame"
await "the viewer is not asked" test -s "$work/opened"
grep -qx /tmp/zavik_capture.jpg "$work/opened" || fail "the viewer was given $(cat "$work/opened")"

xdotool windowfocus "$window"; click 996 25
ended() { ! kill -0 "$program" 2>/dev/null; }
await "the program does not end" ended
wait "$program" || fail "the program ended with $?"
! grep -qE 'ERROR: (Address|Leak)Sanitizer|runtime error' "$log" || fail "a sanitizer spoke"
echo "the whole road was driven"
