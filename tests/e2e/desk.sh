# shellcheck shell=bash
# shellcheck disable=SC2154 # $sample is set by who sources this
# A virtual display for the real program: sourced by the tests beside it, after they have set
# sample=A SAMPLE CARD (it is copied) and shots=FOLDER FOR SCREENSHOTS (or nothing). Gives: $work, $log and $work/card, the functions below and those of hands.sh.
for tool in Xvfb xdotool import ffmpeg; do
  command -v "$tool" >/dev/null || { echo "skipped: $tool is not installed"; exit 77; }
done

work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait 2>/dev/null || true; rm -rf "$work"' EXIT
log=$work/zavik.log

. "$(dirname "${BASH_SOURCE[0]}")/hands.sh"

cp -r "$sample" "$work/card"
Xvfb -noreset -displayfd 3 -screen 0 1600x1000x24 -nolisten tcp 3>"$work/display" 2>/dev/null &
for _ in $(seq 100); do [ "$(wc -l <"$work/display")" -gt 0 ] && break; sleep 0.1; done
DISPLAY=:$(cat "$work/display")
export DISPLAY QT_QPA_PLATFORM=xcb XDG_CONFIG_HOME=$work/config XDG_RUNTIME_DIR=$work XDG_DATA_HOME=$work/data HOME=$work
# The picture is drawn in software here anyway, and an OpenGL driver that is unloaded before the end leaks.
export QT_XCB_GL_INTEGRATION=none
# The display's and the web engine's own libraries do not stand the strictest checks.
export ASAN_OPTIONS=new_delete_type_mismatch=0
LSAN_OPTIONS=suppressions=$(dirname "$0")/../leaks.txt:print_suppressions=0
export LSAN_OPTIONS
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
