# shellcheck shell=bash
# shellcheck disable=SC2154 # $log, $work, $shots, $program, $window and $known are set by who sources this
# A user's hands and eyes on a display where the program runs: sourced after $log, $work and $shots (a folder, or nothing) are set.
# What is clicked and looked at belongs to $window.
fail() { echo "FAILED: $1" >&2; tail -n 15 "$log" >&2; import -window root "$work/failed.png" 2>/dev/null || true
  [ -z "$shots" ] || cp "$work/failed.png" "$shots/"; exit 1; }
# Waits until the command succeeds; says what it waited for when it never does.
await() { local what=$1; shift; for _ in $(seq "$patience"); do "$@" && return 0; sleep 0.1; done; fail "$what"; }
step() { echo "- $1"; shot=$((shot + 1)); [ -z "$shots" ] || import -window root "$shots/$shot-${1// /-}.png"; }
shot=0
patience=200 # tries
ended() { ! kill -0 "$program" 2>/dev/null; }
geometry() { xdotool getwindowgeometry --shell "$window"; }
size_is() { eval "$(geometry)"; [ "$WIDTH $HEIGHT" = "$1 $2" ]; }
place() { eval "$(geometry)"; echo "$((X + $1)) $((Y + $2))"; }
move() { local at; read -ra at <<<"$(place "$1" "$2")"; xdotool mousemove --sync "${at[@]}"; }
click() { move "$1" "$2"; xdotool click 1; }
key() { xdotool key "$@"; }
logged() { [ "$(grep -c -- "$1" "$log")" -ge "${2:-1}" ]; }
# A hash of a region of the window: WIDTHxHEIGHT+X+Y.
region() { import -window "$window" -crop "$1" +repage rgb:- | md5sum; }
video=560x300+40+80
changes() { local before; before=$(region "$1"); sleep 0.3; [ "$before" != "$(region "$1")" ]; }
rests() { ! changes "$1"; }
differs() { [ "$2" != "$(region "$1")" ]; }
row() { echo $((50 + 32 + 26 + 24 * $1 - 12)); }
listed() { [ "$(import -window "$window" -crop 330x24+676+$(($(row 1) - 12)) +repage png:- | identify -format %k -)" -gt 20 ]; }
# Plays a row of the list.
play() {
  await "the list stays empty" listed
  move 850 "$(row "$1")"; xdotool click --repeat 2 --delay 60 1
  await "the double click starts nothing" logged "selectedRow=$(($1 - 1))"
  await "no moving picture" changes "$video"
}
named() { xdotool search --onlyvisible --name "$1" 2>/dev/null | head -n 1; }
is_open() { [ -n "$(named "$1")" ]; }
is_closed() { ! is_open "$1"; }
windows() { xdotool search --onlyvisible --name '' 2>/dev/null | sort; }
# The alert that has come since the windows were listed.
alert() { comm -13 <(echo "$known") <(windows) | tail -n 1; }
has_alert() { [ -n "$(alert)" ]; }
