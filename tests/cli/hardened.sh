#!/bin/sh
# hardened.sh PROGRAM...: each can be loaded anywhere, has nothing writable that the loader goes by, and watches
# its stack; what is built with fortified calls (FORTIFIED=1) has them.
command -v readelf >/dev/null || exit 77
status=0
needs()
{
    readelf -hldW --dyn-syms "$program" | grep -Eq "$2" && return
    echo "$program: no $1"
    status=1
}
for program; do
    needs 'position-independent code' 'Type: +DYN .*Position-Independent'
    needs 'read-only relocations' 'GNU_RELRO'
    needs 'binding at the start' 'FLAGS_1.* NOW'
    needs 'stack that cannot be run' 'GNU_STACK .* RW +0x'
    needs 'stack protector' '__stack_chk_fail'
    [ -z "$FORTIFIED" ] || needs 'fortified call' '__[a-z]+_chk@'
done
exit $status
