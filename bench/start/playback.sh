#!/usr/bin/env bash
# Processor time of playing a 1080p30 recording for ten seconds: the program beside mpv in a window of the same size,
# both drawing in software; then of the program resting paused.
# usage: playback.sh ZAVIK
set -euo pipefail
zavik=$1
work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait 2>/dev/null || true; rm -rf "$work"' EXIT
mkdir "$work/card"
ffmpeg -v error -f lavfi -i testsrc2=size=1920x1080:rate=30:duration=30 -f lavfi -i sine=duration=30 -c:v libx264 -preset fast \
  -b:v 8M -g 30 -pix_fmt yuv420p -c:a pcm_s16le "$work/card/alwa_20150321_142530_F.avi"
Xvfb -noreset -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$work/display" 2>/dev/null &
until [ "$(wc -l <"$work/display")" -gt 0 ]; do sleep 0.1; done
DISPLAY=:$(cat "$work/display")
export DISPLAY QT_QPA_PLATFORM=xcb XDG_CONFIG_HOME=$work XDG_RUNTIME_DIR=$work QTWEBENGINE_DISABLE_SANDBOX=1 HOME=$work

ticks() { awk '{ print $14 + $15 }' "/proc/$1/stat"; }
spent() { local before; before=$(ticks "$1"); sleep 10; echo $((($(ticks "$1") - before) * 1000 / $(getconf CLK_TCK))); }
wakeups() { awk '/^voluntary/ { n += $2 } END { print n }' /proc/"$1"/task/"$1"/status; }

mpv --no-config --really-quiet --vo=x11 --ao=null --geometry=656x372 --no-keepaspect --no-osc --loop "$work"/card/*.avi &
player=$!
sleep 3; theirs=$(spent "$player"); kill "$player"; wait "$player" 2>/dev/null || true

"$zavik" "$work/card" 2>/dev/null &
program=$!
window=$(timeout 30 xdotool search --sync --onlyvisible --name '^ZAVIK$' | head -n 1)
sleep 1; xdotool mousemove --window "$window" 850 120 click --repeat 2 --delay 60 1
sleep 3; ours=$(spent "$program")
xdotool windowfocus "$window" key space
sleep 2; before=$(wakeups "$program"); paused=$(spent "$program"); after=$(wakeups "$program")
awk -v o="$ours" -v t="$theirs" -v p="$paused" -v w=$((after - before)) 'BEGIN {
  printf "ten seconds of 1080p30: zavik %d ms, mpv %d ms of processor time, %.2f x\n", o, t, o / t
  printf "ten seconds paused: %d ms, %.1f wake-ups a second of the main thread\n", p, w / 10 }'
