#!/usr/bin/env bash
# Both cameras at 1080p30, picture in picture in a window of 1280x720, for ten seconds: the processor time of the player beside
# mpv's with the same two files and the same graph, both drawing in software; then changes of the camera.
# usage: cameras.sh TWO_CAMERAS [RATE]   (a low rate where the machine is busy, so that no picture is left out)
set -euo pipefail
ours=$1 rate=${2:-1}
work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait 2>/dev/null || true; rm -rf "$work"' EXIT
film() {
  ffmpeg -v error -f lavfi -i "testsrc2=size=1920x1080:rate=30,$2" -f lavfi -i sine -t 45 -c:v libx264 -preset ultrafast -b:v 9M -g 30 \
    -pix_fmt yuv420p -c:a pcm_s16le "$work/$1.avi"
}
film front null; film rear negate
Xvfb -noreset -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$work/display" 2>/dev/null &
until [ "$(wc -l <"$work/display")" -gt 0 ]; do sleep 0.1; done
DISPLAY=:$(cat "$work/display")
export DISPLAY QT_QPA_PLATFORM=xcb XDG_CONFIG_HOME=$work XDG_RUNTIME_DIR=$work HOME=$work

ticks() { awk '{ print $14 + $15 }' "/proc/$1/stat"; }
mpv --no-config --speed="$rate" --really-quiet --vo=x11 --ao=null --geometry=1280x720 --no-keepaspect --no-osc --sws-fast=yes --sws-scaler=bilinear \
  --external-file="$work/rear.avi" --lavfi-complex="$("$ours" --graph)" "$work/front.avi" &
player=$!
sleep 4; before=$(ticks "$player"); sleep 10
theirs=$((($(ticks "$player") - before) * 1000 / $(getconf CLK_TCK)))
echo "mpv: $theirs ms of processor time"
kill "$player"; wait "$player" 2>/dev/null || true
"$ours" "$work/front.avi" "$work/rear.avi" "$rate" | tee "$work/ours"
awk -v theirs="$theirs" 'NR == 1 { printf "%.2f of mpv'"'"'s\n", $1 / theirs }' "$work/ours"
