# A virtual display for the real program: sourced by the tests beside it, after they have set
# sample=A SAMPLE CARD (it is copied) and shots=FOLDER FOR SCREENSHOTS (or nothing). Gives: $work, $log and $work/card, the functions below.
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

cp -r "$sample" "$work/card"
Xvfb -noreset -displayfd 3 -screen 0 1600x1000x24 -nolisten tcp 3>"$work/display" 2>/dev/null &
for _ in $(seq 100); do [ "$(wc -l <"$work/display")" -gt 0 ] && break; sleep 0.1; done
DISPLAY=:$(cat "$work/display")
export DISPLAY QT_QPA_PLATFORM=xcb XDG_CONFIG_HOME=$work/config XDG_RUNTIME_DIR=$work XDG_DATA_HOME=$work/data HOME=$work
# The picture is drawn in software here anyway, and an OpenGL driver that is unloaded before the end leaks.
export QT_XCB_GL_INTEGRATION=none
# The display's and the web engine's own libraries do not stand the strictest checks.
export ASAN_OPTIONS=new_delete_type_mismatch=0
export LSAN_OPTIONS=suppressions=$(dirname "$0")/../leaks.txt:print_suppressions=0
# The page of the map cannot have its own sandbox when root runs this.
[ "$(id -u)" -ne 0 ] || export QTWEBENGINE_DISABLE_SANDBOX=1

# Starts the program on the sample card and waits for its window.
start() {
  "$@" "$work/card" 2>"$log" &
  program=$!
  window=$(timeout 60 xdotool search --sync --onlyvisible --name '^ZAVIK$' | head -n 1) || fail "no window"
  xdotool windowfocus "$window"
}
# Closes the window and looks at how the program ends.
finish() {
  xdotool windowfocus "$window"; click 996 25
  await "the program does not end" ended
  wait "$program" || fail "the program ended with $?"
  ! grep -qE 'ERROR: (Address|Leak)Sanitizer|runtime error' "$log" || fail "a sanitizer spoke"
}
ended() { ! kill -0 "$program" 2>/dev/null; }
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
row() { echo $((50 + 32 + 26 + 24 * $1 - 12)); }
listed() { [ "$(import -window "$window" -crop 330x24+676+$(($(row 1) - 12)) +repage png:- | identify -format %k -)" -gt 20 ]; }
# Plays a row of the list.
play() {
  await "the list stays empty" listed
  move 850 "$(row "$1")"; xdotool click --repeat 2 --delay 60 1
  await "the double click starts nothing" logged "selectedRow=$(($1 - 1))"
  await "no moving picture" changes $video
}
