#!/usr/bin/env bash
# The card's tools in the real program: the drive log with its map and its export, the camera's clock.
# usage: cardtools.sh ZAVIK CARD ZAVIKCTL [FOLDER FOR SCREENSHOTS]
set -euo pipefail
zavik=$1 sample=$2 zavikctl=$3 shots=${4:-}
. "$(dirname "$0")/desk.sh"
card=$work/card

answer() { await "$1" has_alert; step "$2"; xdotool windowfocus --sync "$(alert)"; key Return; }

start "$zavik" --card "$card"
player=$window
await "the list stays empty" listed

key ctrl+comma
await "the settings do not come" is_open '^Camera Settings'
window=$(named '^Camera Settings')
xdotool windowfocus --sync "$window"
await "the card's sheet does not go" rests 320x140+240+290
key ctrl+6
sleep 0.3; await "the log's sheet does not go" rests 320x140+240+290
# The log is read behind the page: its first row comes when it may.
move 200 140
opens_map() { xdotool click --repeat 2 --delay 60 1; sleep 0.5; is_open '^Map$'; }
await "no map for the record" opens_map
await "another row" logged '^rowNum='
step "a record on the map"

xdotool windowfocus --sync "$window"
eval "$(geometry)"; click $((WIDTH - 57)) $((HEIGHT - 82))
await "no save panel" is_open '^Export the drive log$'
# A panel that hangs, with the card that it shows, holds nothing else up.
known=$(windows)
pkill -STOP -P "$program" -f file-panel
await "no word about the panel that hangs" has_alert
step "a panel that hangs"
pkill -CONT -P "$program" -f file-panel
word_is_gone() { ! has_alert; }
await "the word stays though the panel answers" word_is_gone
panel=$(named '^Export the drive log$')
xdotool windowfocus --sync "$panel"
key ctrl+a; xdotool type --delay 20 "$work/log.csv"
known=$(windows)
key Return
answer "no word about the export" "exported"
"$zavikctl" drive-log "$card/DrvInfo/zavik_000.drv" >"$work/expected.csv"
cmp "$work/log.csv" "$work/expected.csv" || fail "the export is not the log"
python3 - "$work/log.csv" <<'END' || fail "a spreadsheet would not read the export"
import csv
import sys
with open(sys.argv[1], newline='', encoding='utf-8') as file:
    rows = list(csv.reader(file))
assert len(rows) > 100 and {len(row) for row in rows} == {15}, len(rows)
assert [row[0] for row in rows[1:]] == [str(i) for i in range(1, len(rows))]
END
xdotool windowfocus --sync "$window"; key Escape
await "Escape does not close the settings" is_closed '^Camera Settings'

window=$player
xdotool windowfocus --sync "$player"; key ctrl+t
await "the clock does not come" is_open "^Set the Camera's Clock$"
window=$(named "^Set the Camera's Clock$")
xdotool windowfocus --sync "$window"
known=$(windows)
eval "$(geometry)"
move $((WIDTH - 60)) $((HEIGHT - 27)); sleep 0.5; xdotool click 1
answer "no word about the clock" "clock saved"
await "the clock does not close" is_closed "^Set the Camera's Clock$"
written=$("$zavikctl" clock "$card/timeset.cfg")
age=$(($(date +%s) - $(date -d "${written//\//-}" +%s)))
[ "$age" -ge 0 ] && [ "$age" -lt 300 ] || fail "the clock file says $written"

window=$player
finish
echo "the log was exported, the clock was set"
