#!/bin/sh
# The real program with an output that cannot be written: exit code 1 and one line, never a signal.
# usage: broken-output.sh ZAVIKCTL
set -u
zavikctl=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

check() {
    if [ "$2" -ne 1 ] || [ "$(wc -l <"$folder/errors")" -ne 1 ]; then
        echo "$1: exit code $2, errors:"
        cat "$folder/errors"
        exit 1
    fi
}

"$zavikctl" --help >/dev/full 2>"$folder/errors"
check "full disk" $?

"$zavikctl" --help >&- 2>"$folder/errors"
check "closed output" $?

mkfifo "$folder/pipe"
exec 3<>"$folder/pipe"
exec 4>"$folder/pipe"
exec 3>&-
"$zavikctl" --help >&4 2>"$folder/errors"
check "pipe without a reader" $?
