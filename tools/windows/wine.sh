#!/bin/sh
# Runs a Windows program by wine, in a world of its own under build/. Wine's services outlive the program that started
# them and would hold the output open of whoever waits for its end, so what it says goes by way of files;
# `wine.sh --end` ends the services. Debian's wine brings a zlib1.dll, which Windows lacks. Wine's own libraries need it,
# so it cannot be switched off: check_imports.py sees that no program of ours asks for it.
set -eu

WINEPREFIX=${WINEPREFIX:-$(cd "$(dirname "$0")/../.." && pwd)/build/windows/wine}
export WINEPREFIX WINEDEBUG="${WINEDEBUG:--all}" WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree=;mshtml=;winemenubuilder.exe=}"
wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
server=$(command -v wineserver64 || echo /usr/lib/wine/wineserver64)

if [ "$1" = --end ]; then
    [ ! -e "$WINEPREFIX" ] || "$server" -k || true
    exit 0
fi
if [ ! -e "$WINEPREFIX/made" ]; then
    mkdir -p "$WINEPREFIX"
    ( # several programs may be started at once
        flock 9
        [ -e "$WINEPREFIX/made" ] || env -u DISPLAY "$wine" wineboot --init > /dev/null 2>&1 < /dev/null 9>&-
        # The oldest Windows that the programs are for; wine's own choice is 7.
        "$wine" reg add 'HKCU\Software\Wine' /v Version /d win10 /f > /dev/null 2>&1 < /dev/null 9>&-
        # What runs by now is still that one's: beside it an application that is let go of would not always end.
        "$server" -k || true
        touch "$WINEPREFIX/made"
    ) 9> "$WINEPREFIX.lock"
fi
"$server" -p120 > /dev/null 2>&1 < /dev/null || true

said=$(mktemp -d)
trap 'rm -rf "$said"' EXIT
status=0
"$wine" "$@" > "$said/out" 2> "$said/err" || status=$?
cat "$said/out"
cat "$said/err" >&2
exit "$status"
