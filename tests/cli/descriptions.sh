#!/usr/bin/env bash
# The completions work in bash, and man has nothing to say against the manual pages.
# usage: descriptions.sh FOLDER
set -eu
# shellcheck source=/dev/null
. "$1/bash/zavikctl"
compopt() { :; }

offers() {
    local expected=$1
    shift
    COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
    _zavikctl
    [ "${COMPREPLY[*]}" = "$expected" ] || { echo "$*: ${COMPREPLY[*]}, not $expected"; exit 1; }
}

offers "--help --version" zavikctl --
offers "telemetry" zavikctl t
offers "--json --csv --gpx --help" zavikctl telemetry a.avi --
offers "en ko" zavikctl config --region ""
offers "defaults" zavikctl config --region ko d
offers "" zavikctl nonsense ""

command -v man >/dev/null || exit 0
for page in "$1"/man/*; do
    warnings=$(LC_ALL=C.UTF-8 man --warnings --local-file --troff-device=utf8 "$page" 2>&1 >/dev/null)
    [ -z "$warnings" ] || { echo "$page: $warnings"; exit 1; }
done
