#!/usr/bin/env bash
# Starts the real program on a sample card under a virtual display and drives it with keys and mouse.
# usage: player.sh ZAVIK CARD [FOLDER FOR SCREENSHOTS]
set -euo pipefail
zavik=$1 sample=$2 shots=${3:-}
. "$(dirname "$0")/desk.sh"

mkdir "$work/bin"
printf '#!/bin/sh\necho "$@" >>"%s/opened"\n' "$work" >"$work/bin/xdg-open"
chmod +x "$work/bin/xdg-open"

start env "PATH=$work/bin:$PATH" "$zavik"
size_is 1020 640 || fail "the window does not start at 1020 x 640"
await "the list stays empty" listed
step "list"
play 1
step "playing"

key space; await "space does not pause" rests "$video"
step "paused"
key space; await "space does not resume" changes "$video"

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
await "the next recording does not move" changes "$video"
key ctrl+s
panel=$(timeout 20 xdotool search --sync --onlyvisible --name '^Save Settings$' | head -n 1) || fail "no save panel"
step "save panel"
xdotool windowfocus --sync "$panel"; key ctrl+a; xdotool type "$work/picture.png"; key Return
await "the capture is not saved" test -s "$work/picture.png"
[ "$(head -c 3 "$work/picture.png" | od -An -tx1 | tr -d ' ')" = ffd8ff ] || fail "the capture is not the picture of the frame"
await "the viewer is not asked" test -s "$work/opened"
grep -qx /tmp/zavik_capture.jpg "$work/opened" || fail "the viewer was given $(cat "$work/opened")"

finish
echo "the whole road was driven"
