#!/bin/sh
# Plays the program on a screen of its own and takes the pictures of README and manual anew.
# usage: tools/make_pictures.sh INSTALLATION [FOLDER]
# INSTALLATION is the built folder of the programs.
set -eu
sh "$(dirname "$0")/install_packages.sh" pictures
built=$1
pictures=$(cd "${2:-docs/pictures}" && pwd)
work=$(mktemp -d)
server= desktop=
cleanup() {
    [ -z "$desktop" ] || kill "$desktop" 2> /dev/null || true
    [ -z "$server" ] || kill "$server" 2> /dev/null || true
    wait 2> /dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

Xvfb -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp 3> "$work/display" 2> /dev/null &
server=$!
until [ -s "$work/display" ]; do sleep 0.1; done
DISPLAY=:$(cat "$work/display")
export DISPLAY HOME="$work" QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR="$work"
cp -r "$built" "$work/Tarvik"
cd "$work/Tarvik"

start() {
    ./tarvik &
    desktop=$!
    until main=$(xdotool search --onlyvisible --name '^Tarvik'); do sleep 0.1; done
    sleep 1.5 # the window has grown
    xdotool windowfocus "$main" # no window manager does
    sleep 0.3
}
stop() {
    kill "$desktop"
    wait "$desktop" 2> /dev/null || true
    desktop=
}
key() {
    xdotool key --delay 120 "$@"
    sleep 0.6
}
typed() {
    xdotool type --delay 60 "$1"
    sleep 0.3
}
# Clicks a place of a window, in hundredths of its width and height.
click() {
    eval "$(xdotool getwindowgeometry --shell "$1")"
    xdotool mousemove $((X + WIDTH * $2 / 100)) $((Y + HEIGHT * $3 / 100)) click 1 mousemove 1900 1060
    sleep 0.6
}
open_file() {
    key ctrl+o
    typed "$1"
    key Return
    sleep 0.8
}
take() {
    import -window root "$work/taken.png"
    convert "$work/taken.png" -bordercolor black -border 1 -trim +repage -dither None -colors 128 \
        -define png:compression-level=9 "$pictures/$1.png"
    echo "$1"
}

start
open_file 3139.txt
take reading
stop

start
click "$main" 76 84 # the English dictionary
typed apple
key Return
take dictionary
stop

start
open_file 3139.txt
click "$main" 94 72 # data analysis
typed 4900
key Escape
key Return
key q
take analysis
stop

start
open_file 3139.txt
typed "An docket"
key Return Return
sleep 0.5
key Return
sleep 9
take docket
stop

start
click "$main" 94 72
open_file 3159.txt
click "$main" 94 78 # the designer
designer=$(xdotool search --onlyvisible --name . | grep -v "^$main\$" | tail -n 1)
click "$designer" 44 86 # read a design
key y
click "$designer" 53 86 # preview
key y
sleep 1
take designer
stop

# The dialog shows where the files lie, so they lie where a user would have them.
start
key ctrl+o
xdotool type --delay 400 维修/维修记录.txt
key Return
sleep 0.8
typed "An order"
key Return Return
take order
stop
