#!/usr/bin/env bash
# Opens the settings from the real program on a sample card, changes something on every page with the keyboard,
# saves, and looks at the card's file and at the player.
# usage: settings.sh ZAVIK CARD ZAVIKCTL [FOLDER FOR SCREENSHOTS]
set -euo pipefail
zavik=$1 sample=$2 zavikctl=$3 shots=${4:-}
. "$(dirname "$0")/desk.sh"
card=$work/card config=$work/card/config.bin
rm "$config"

start "$zavik" --card "$card"
player=$window
key() { xdotool key --delay 60 "$@"; }
region() { import -window "$1" -crop "$2" +repage rgb:- | md5sum; }
changes() { local before; before=$(region "$@"); sleep 0.3; [ "$before" != "$(region "$@")" ]; }
rests() { ! changes "$@"; }
settings_window() { xdotool search --onlyvisible --name '^Camera Settings' 2>/dev/null | head -n 1; }
is_open() { [ -n "$(settings_window)" ]; }
is_closed() { ! is_open; }
windows() { xdotool search --onlyvisible --name '' 2>/dev/null | sort; }
# The alert that has come since the windows were listed.
alert() { comm -13 <(echo "$known") <(windows) | tail -n 1; }
has_alert() { [ -n "$(alert)" ]; }
# A field of the camera's record, by its name.
field() { "$zavikctl" config show "$config" | sed -n "s/^$1=//p"; }
is_record() { [ -f "$config" ] && [ "$(stat -c %s "$config")" = 272 ]; }

open_settings() {
  xdotool windowfocus --sync "$player"; key ctrl+comma
  await "the settings do not come" is_open
  window=$(settings_window)
  xdotool windowfocus --sync "$window"
  # The sheet's bar moves while the card is read.
  await "the loading sheet does not go" rests "$window" 320x140+240+290
}
save() {
  known=$(windows); key ctrl+s
  await "no word about the save" has_alert
  step "$1"
  xdotool windowfocus --sync "$(alert)"; key Return
  await "the window does not close after the save" is_closed
}
# A page that loads something does so behind the sheet.
page() { key "ctrl+$1"; sleep 0.3; await "page $1 does not come to rest" rests "$window" 320x140+240+290; step "page $1"; }
changed() { [ "$(field "$1")" != "$2" ] || fail "$3 is still $2"; }

xdotool windowfocus "$player"
await "the list stays empty" eval \
  '[ "$(import -window "$player" -crop 330x24+676+108 +repage png:- | identify -format %k -)" -gt 20 ]'
xdotool mousemove --window "$player" 850 120 click --repeat 2 --delay 60 1
await "nothing plays" changes "$player" 560x300+40+80
xdotool windowfocus "$player"; key space
await "space does not pause" rests "$player" 560x300+40+80

open_settings
save "saved to a card without settings"
is_record || fail "no record on the card"
names="vid_enc_res disp_segment_mode speed_disp_unit BrightnessFixed audio_mux_enable"
mapfile -t before < <(for name in $names; do field "$name"; done)
set -- "${before[@]}"
kilometres=$(region "$player" 130x130+540+400)

open_settings
page 1; key Tab Right
page 2; key Tab Right
page 3; key Tab Tab Right
page 4; key shift+Tab shift+Tab shift+Tab shift+Tab shift+Tab shift+Tab Right
[ "$(xdotool getwindowname "$window")" = "$(xdotool getwindowname "$(settings_window)")" ] || fail "another window"
page 5; key Tab space
page 6
step "all pages seen"
xdotool getwindowname "$window" | grep -qF ": $config" || fail "the title is $(xdotool getwindowname "$window")"
save "saved"
changed vid_enc_res "$1" "the resolution"
changed disp_segment_mode "$2" "the screen's layout"
[ "$(field speed_disp_unit)" = 1 ] || fail "the unit of speed is $(field speed_disp_unit)"
[ "$(field checksum_ok)" = true ] || fail "the checksum does not fit"
[ "$4 $(field BrightnessFixed)" = "3000 0" ] || fail "the place of use went from $4 to $(field BrightnessFixed)"
changed audio_mux_enable "$5" "voice recording"
[ "$("$zavikctl" config show "$config.bak" | sed -n 's/^vid_enc_res=//p')" = "$1" ] || fail "the record before is not kept"
[ "$kilometres" != "$(region "$player" 130x130+540+400)" ] || fail "the player still shows kilometres"
step "miles"

open_settings
key Escape
await "Escape does not close" is_closed
xdotool windowfocus --sync "$player"; xdotool mousemove --window "$player" 996 25 click 1
ended() { ! kill -0 "$program" 2>/dev/null; }
await "the program does not end" ended
wait "$program" || fail "the program ended with $?"
! grep -qE 'ERROR: (Address|Leak)Sanitizer|runtime error' "$log" || fail "a sanitizer spoke"
echo "the camera's settings were changed on every page"
