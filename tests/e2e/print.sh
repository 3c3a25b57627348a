#!/usr/bin/env bash
# The real program prints the picture on screen: a print server of its own, a network printer behind it, the print
# dialog driven with keys.
# usage: print.sh ZAVIK CARD [FOLDER FOR SCREENSHOTS]
set -euo pipefail
PATH=$PATH:/usr/sbin
zavik=$1 sample=$2 shots=${3:-}
for tool in cupsd lpadmin lpoptions ippeveprinter dbus-daemon; do
  command -v "$tool" >/dev/null || { echo "skipped: $tool is not installed"; exit 77; }
done
[ "$(id -u)" -eq 0 ] || { echo "skipped: only root may start a print server of its own"; exit 77; }
. "$(dirname "$0")/desk.sh"

free_port() { python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])'; }
answers() { lpstat -h "$server" -r 2>/dev/null | grep -q 'is running'; }

# The printer wants a system bus, though it announces itself to nobody. What it prints goes into a file.
dbus-daemon --session --nofork --print-address=1 >"$work/bus" &
await "no bus" test -s "$work/bus"
printf '#!/bin/sh\nenv >"%s/attributes"\ncat "$1" >"%s/paper.new"\nmv "%s/paper.new" "%s/paper"\n' \
  "$work" "$work" "$work" "$work" >"$work/print"
chmod +x "$work/print"
printer=$(free_port)
mkdir "$work/printer"
DBUS_SYSTEM_BUS_ADDRESS=$(cat "$work/bus") ippeveprinter -r off -n localhost -p "$printer" -f image/jpeg,application/pdf \
  -d "$work/printer" -c "$work/print" Test >"$work/printer.log" 2>&1 &

server=$work/cups.sock
mkdir -p "$work/cups"/{root,cache,spool/tmp,state,logs,data} "$work/cups/root/ppd"
chmod 755 "$work" "$work/cups"
printf 'Listen %s\nBrowsing Off\nDefaultAuthType None\nWebInterface No\n<Location />\nOrder allow,deny\nAllow all\n</Location>
<Policy default>\n<Limit All>\nOrder allow,deny\nAllow all\n</Limit>\n</Policy>\n' "$server" >"$work/cups/cupsd.conf"
printf 'ServerRoot %s\nCacheDir %s\nRequestRoot %s\nTempDir %s\nStateDir %s\nErrorLog %s\nAccessLog %s\nPageLog %s\nSystemGroup root\n' \
  "$work/cups/root" "$work/cups/cache" "$work/cups/spool" "$work/cups/spool/tmp" "$work/cups/state" \
  "$work/cups/logs/error" "$work/cups/logs/access" "$work/cups/logs/page" >"$work/cups/cups-files.conf"
cupsd -f -c "$work/cups/cupsd.conf" -s "$work/cups/cups-files.conf" 2>"$work/cups/logs/start" &
await "the print server does not answer" answers
lpadmin -h "$server" -p office -E -v "ipp://localhost:$printer/ipp/print" 2>/dev/null
export CUPS_SERVER=$server

start "$zavik"
play 1
xdotool key space; await "space does not pause" rests "$video"
xdotool key ctrl+p
panel=$(timeout 30 xdotool search --sync --onlyvisible --name '^Print$' | head -n 1) || fail "no print dialog"
step "print dialog"
xdotool windowfocus --sync "$panel"; xdotool key Return
await "nothing reaches the printer" test -s "$work/paper"
step "printed"
cmp -s "$work/paper" /tmp/zavik_capture.jpg || fail "the paper does not show the frame"
[ "$(head -c 3 "$work/paper" | od -An -tx1 | tr -d " ")" = ffd8ff ] || fail "the paper shows no picture"
grep -qx IPP_DOCUMENT_FORMAT_SUPPLIED=image/jpeg "$work/attributes" || fail "the printer was told another format"
finish
echo "the picture is on paper"
