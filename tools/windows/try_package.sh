#!/bin/sh
# Tries the archive as a user would: unpacks it, makes the dockets by the player, then by the window, if it is in there,
# on a screen of its own, both under wine. The window has no drive D: and so offers a folder among the user's documents.
# A picture of the window at the end stands in build/tarvik-windows.png, to be looked at.
set -eu
cd "$(dirname "$0")/../.."

trial=$PWD/build/windows/trial
wine_tools=$PWD/tools/windows
wine=$wine_tools/wine.sh
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
mkdir -p "$trial/by player"
(cd "$trial" && cmake -E tar xf ../../tarvik-windows.zip)
python3 tools/windows/check_imports.py "$trial/tarvik"
cd "$trial/tarvik"
for program in *.exe; do
    x86_64-w64-mingw32-strings -el "$program" > ../strings.txt
    grep -q ProductVersion ../strings.txt || fail "$program does not say what it is"
    grep -aq PerMonitorV2 "$program" || fail "$program has no manifest"
done

sh "$wine" tarvik-play.exe --drive 'd=..\by player' docket.play > ../played.txt || fail "the player's status, see played.txt"
all_dockets_in "$trial/by player" || fail "the player made $(dockets_in "$trial/by player") dockets"

# A console is left as it was found: a batch file's own words would be unreadable behind the player.
x86_64-w64-mingw32-gcc-posix -Wall -Werror -o ../in_console.exe "$wine_tools/in_console.c"
script -qec "sh '$wine' ../in_console.exe tarvik-play.exe --version" ../console.txt > ../shown.txt < /dev/null || fail "the console's code page"

[ -e tarvik.exe ] || {
    echo "the archive: 27 dockets by the player"
    exit 0
}

rm -f "$WINEPREFIX/dosdevices/d:"
documents=$WINEPREFIX/drive_c/users/$(id -un)/Documents
[ ! -L "$documents" ] || rm "$documents" # wine has it lead to the developer's own
by_window="$documents/Atarvik output"
mkdir -p "$documents"
rm -rf "$by_window"
sh "$wine" --end # what runs so far has no screen
open_screen 1280x900
# The windows on wine's screen cannot be told apart from outside: each step waits until the screen has changed by more
# than a cursor and then rests for so many seconds, and keeps a picture of it.
differs() {
    { compare -metric AE "$work/$1.png" "$work/now.png" null: 2>&1 || true; } | awk '{ exit !($1 > 500) }'
}
has_changed() {
    import -window root "$work/now.png"
    differs last
}
is_at_rest() {
    import -window root "$work/before.png"
    sleep "$1"
    import -window root "$work/now.png"
    ! differs before
}
picture() { # name seconds
    wait_for has_changed
    wait_for is_at_rest "$2"
    mv "$work/now.png" "$work/last.png"
    cp "$work/last.png" "$trial/$1.png"
}
import -window root "$work/last.png"
sh "$wine" explorer.exe /desktop=tarvik,1280x900 tarvik.exe > "$trial/window.txt" 2>&1 &
picture 1-start 12 # the opening, and the window grows
xdotool key ctrl+o
picture 2-dialog 3
xdotool type --delay 60 3139.txt
xdotool key Return
picture 3-report 3
xdotool type --delay 60 'An docket'
xdotool key Return # the run
picture 4-folder 3
xdotool key Return # the folder that is offered
picture 5-question 3
xdotool key Return
wait_for all_dockets_in "$by_window"
picture 6-dockets 6
cp "$trial/6-dockets.png" "$trial/../../tarvik-windows.png"
xdotool key F1 # the window still answers
picture 7-manual 3
diff -r "$trial/by player/Atarvik output" "$by_window" || fail "the window's dockets are not the player's"
echo "the archive: 27 dockets by the player, the same 27 by the window"
