#!/bin/sh
# Tries the archive as a user would: unpacks it, makes the dockets by the player, then by the window on a screen of its
# own, both under wine. A picture of the window at the end stands in build/tarvik-windows.png, to be looked at.
set -eu
cd "$(dirname "$0")/../.."

trial=$PWD/build/windows/trial
wine=$PWD/tools/windows/wine.sh
server=
cleanup() {
    sh "$wine" --end
    [ -z "$server" ] || kill "$server" 2> /dev/null || true
}
trap cleanup EXIT
fail() {
    echo "the archive: $1" >&2
    exit 1
}
# Waits until a command succeeds, a minute at most.
wait_for() {
    tries=0
    until "$@" > /dev/null 2>&1; do
        tries=$((tries + 1))
        [ $tries -lt 120 ] || fail "in vain: $*"
        sleep 0.5
    done
}
dockets_in() {
    find "$1" -name '*.xlsx' | wc -l
}
all_dockets_in() {
    [ "$(dockets_in "$1")" = 27 ]
}

rm -rf "$trial"
mkdir -p "$trial/by player" "$trial/by window"
(cd "$trial" && cmake -E tar xf ../../tarvik-windows.zip)
cd "$trial/tarvik"

sh "$wine" tarvik-play.exe --drive 'd=..\by player' docket.play > ../played.txt || fail "the player's status, see played.txt"
all_dockets_in "$trial/by player" || fail "the player made $(dockets_in "$trial/by player") dockets"

WINEPREFIX=${WINEPREFIX:-$(cd ../.. && pwd)/wine}
export WINEPREFIX
ln -sfn "$trial/by window" "$WINEPREFIX/dosdevices/d:"
sh "$wine" --end # what runs so far has no screen
Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp 3> "$trial/display" 2> "$trial/server.txt" &
server=$!
wait_for test -s "$trial/display"
DISPLAY=:$(cat "$trial/display")
export DISPLAY
sh "$wine" explorer.exe /desktop=tarvik,1280x900 tarvik.exe > "$trial/window.txt" 2>&1 &
press() {
    xdotool key "$@"
    sleep 1
}
picture() {
    import -window root "$trial/$1.png"
}
wait_for test -e "$trial/tarvik/betweenp.txt" -o -e "$trial/tarvik/nofile.txt" -o -n "$(xdotool search --name 'Tarvik' 2> /dev/null)"
sleep 12 # the opening, and the window grows
picture 1-start
press ctrl+o
xdotool type --delay 60 3139.txt
press Return
sleep 2
picture 2-report
xdotool type --delay 60 'An docket'
press Return # the run
sleep 2
picture 3-question
press Return # the folder that is offered
press Return # the question
wait_for all_dockets_in "$trial/by window"
sleep 6
picture 4-dockets
cp "$trial/4-dockets.png" "$trial/../../tarvik-windows.png"
diff -r "$trial/by player" "$trial/by window" || fail "the window's dockets are not the player's"
echo "the archive: 27 dockets by the player, the same 27 by the window"
