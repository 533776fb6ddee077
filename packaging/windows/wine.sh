#!/usr/bin/env bash
# Runs one program under Wine: wine.sh PROGRAM ARGUMENT... A test program prints nothing there, so its report goes through a file.
set -uo pipefail
export WINEDEBUG=${WINEDEBUG:--all}
# Wine holds Qt's variables back unless their names begin so.
while read -r name; do
    export "WINE$name=${!name}"
done < <(compgen -v QT_)
wine=/usr/lib/wine/wine64
case ${1##*/} in
    *Test.exe)
        report=$(mktemp)
        trap 'rm -f "$report"' EXIT
        "$wine" "$@" -o "$report,txt"
        status=$?
        cat "$report"
        exit $status
        ;;
    *) exec "$wine" "$@" ;;
esac
