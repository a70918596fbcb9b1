#!/bin/sh
# Drives the program on a real X server with a real pointer and keyboard, and looks at what it leaves in its folder.
# usage: real_screen.sh PROGRAM
set -eu
program=$1
. "$(dirname "$0")/../../../tools/own_screen.sh"

open_screen 1920x1080
mkdir "$work/installation"
cp "$program" "$work/installation/tarvik"
printf 'apple\tred\r\nplum\tblue\r\nplum\tgreen\r\n' > "$work/installation/coclus.txt"
cd "$work/installation"
start_window

# esc-q-/ typed in a row over the default text; Form3 and the boxes come between.
xdotool type plum
xdotool key Escape
wait_for grep -q green betweenp.txt
sleep 0.5
xdotool key Return
sleep 0.5
xdotool key q slash
sleep 0.5
xdotool key Return
wait_for grep -q plum betweensum.txt
sleep 0.5
xdotool key BackSpace # "/" is not eaten

# The button of the data-analysis mode, and the Esc of a sequence, by the pointer.
eval "$(xdotool getwindowgeometry --shell "$main" | sed 's/^/main_/')"
press() {
    xdotool mousemove $((main_X + $1)) $((main_Y + $2)) click 1
    sleep 0.5
}
rm betweenp.txt
press 920 505
press 53 644
wait_for grep -q green betweenp.txt
xdotool key Return
sleep 0.5

# What the pointer selects in a pane is pasted into the emptied query box by the context menu: the first row's "plum".
xdotool mousemove $((main_X + 300)) $((main_Y + 520)) click --repeat 2 --delay 60 1
sleep 0.5
xdotool mousemove $((main_X + 100)) $((main_Y + 76)) click --repeat 2 --delay 60 1
sleep 0.5
xdotool mousemove $((main_X + 300)) $((main_Y + 520)) click 3
sleep 0.5
xdotool key Down Down Return
rm betweenp.txt
sleep 0.5
xdotool key Escape
wait_for grep -q blue betweenp.txt
grep -q apple betweenp.txt && fail "the query was not the selected word"

# A limit of size is a failed write, which is told in a box, and no sudden end.
xdotool key Return
sleep 0.5
prlimit --fsize=0 --pid "$desktop"
xdotool key Escape
sleep 1
kill -0 "$desktop" || fail "the program went at a write that failed"
echo "real screen: typed, clicked, selected and pasted"
