#!/bin/sh
# Drives the program on a real X server with a real pointer and keyboard, and looks at what it leaves in its folder.
# usage: real_screen.sh PROGRAM
set -eu
program=$1
work=$(mktemp -d)
server= desktop=
cleanup() {
    [ -z "$desktop" ] || kill "$desktop" 2> /dev/null || true
    [ -z "$server" ] || kill "$server" 2> /dev/null || true
    wait 2> /dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT
fail() {
    echo "real screen: $1" >&2
    exit 1
}
# Waits until a command succeeds, ten seconds at most.
wait_for() {
    tries=0
    until "$@" > /dev/null 2>&1; do
        tries=$((tries + 1))
        [ $tries -lt 100 ] || fail "in vain: $*"
        sleep 0.1
    done
}

Xvfb -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp 3> "$work/display" 2> "$work/server.txt" &
server=$!
wait_for test -s "$work/display"
DISPLAY=:$(cat "$work/display")
export DISPLAY HOME="$work" QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR="$work"

mkdir "$work/installation"
cp "$program" "$work/installation/tarvik"
printf 'apple\tred\r\nplum\tblue\r\nplum\tgreen\r\n' > "$work/installation/coclus.txt"
cd "$work/installation"
./tarvik &
desktop=$!
wait_for xdotool search --onlyvisible --name '^Tarvik'
main=$(xdotool search --onlyvisible --name '^Tarvik' | head -n 1)
sleep 1 # the window has grown

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
