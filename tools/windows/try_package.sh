#!/bin/sh
# Tries the archive as a user would: unpacks it, makes the dockets by the player, then by the window on a screen of its
# own, both under wine. A picture of the window at the end stands in build/tarvik-windows.png, to be looked at.
set -eu
cd "$(dirname "$0")/../.."

trial=$PWD/build/windows/trial
wine=$PWD/tools/windows/wine.sh
WINEPREFIX=${WINEPREFIX:-$PWD/build/windows/wine}
export WINEPREFIX
. tools/own_screen.sh
trap 'sh "$wine" --end; end_all' EXIT
patience=120
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
for program in tarvik tarvik-play tarvik-dictionary; do
    x86_64-w64-mingw32-strings -el $program.exe > ../strings.txt
    grep -q ProductVersion ../strings.txt || fail "$program.exe does not say what it is"
done

sh "$wine" tarvik-play.exe --drive 'd=..\by player' docket.play > ../played.txt || fail "the player's status, see played.txt"
all_dockets_in "$trial/by player" || fail "the player made $(dockets_in "$trial/by player") dockets"

ln -sfn "$trial/by window" "$WINEPREFIX/dosdevices/d:"
sh "$wine" --end # what runs so far has no screen
open_screen 1280x900
sh "$wine" explorer.exe /desktop=tarvik,1280x900 tarvik.exe > "$trial/window.txt" 2>&1 &
press() {
    xdotool key "$@"
    sleep 1
}
picture() {
    import -window root "$trial/$1.png"
}
wait_for xdotool search --name Tarvik
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
