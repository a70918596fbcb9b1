#!/bin/sh
# Plays the program on a screen of its own and takes the pictures of README and manual anew.
# usage: tools/make_pictures.sh INSTALLATION [FOLDER]
# INSTALLATION is the built folder of the programs.
set -eu
sh "$(dirname "$0")/install_packages.sh" pictures
built=$1
pictures=$(cd "${2:-docs/pictures}" && pwd)
. "$(dirname "$0")/own_screen.sh"

open_screen 3840x1080
cp -r "$built" "$work/Tarvik"
cd "$work/Tarvik"

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
    xdotool mousemove $((X + WIDTH * $2 / 100)) $((Y + HEIGHT * $3 / 100)) click 1 mousemove 3830 1070
    sleep 0.6
}
open_file() {
    key ctrl+o
    typed "$1"
    key Return
    sleep 0.8
}
# Each window whole, the main window first, side by side on a plain ground.
take() {
    ground='#eceade'
    rm -f "$work"/window*.png
    left=0
    windows="$main $(xdotool search --onlyvisible --name . | grep -v "^$main\$" || true)"
    for window in $windows; do
        eval "$(xdotool getwindowgeometry --shell "$window")"
        xdotool windowmove "$window" $left 0
        left=$((left + WIDTH + 24))
    done
    sleep 1
    number=0
    for window in $windows; do
        number=$((number + 1))
        import -window "$window" "$work/window$number.png"
    done
    convert "$work"/window*.png -background "$ground" -gravity North +smush 24 -bordercolor "$ground" -border 24 \
        -dither None -colors 128 -define png:compression-level=9 "$pictures/$1.png"
    echo "$1"
}

start_window
open_file 3139.txt
take reading
end_window

start_window
click "$main" 76 84 # the English dictionary
typed apple
key Return
take dictionary
end_window

start_window
open_file 3139.txt
click "$main" 94 72 # data analysis
typed 4900
key Escape
key Return
key q
take analysis
end_window

start_window
open_file 3139.txt
typed "An docket"
key Return Return
sleep 0.5
key Return
sleep 9
take docket
end_window

start_window
key shift+F9 # what is done is recorded
open_file 3139.txt
typed "An docket"
key Return Return
sleep 0.5
key Return
sleep 9
take recording
patience=120 wait_for xdotool search --name '!$' # the run has ended
key shift+F9
typed 每月出单
key Return
end_window

start_window
key F9
take tasks
end_window

start_window
click "$main" 94 72
open_file 3159.txt
click "$main" 94 78 # the designer
designer=$(xdotool search --onlyvisible --name . | grep -v "^$main\$" | tail -n 1)
click "$designer" 44 86 # read a design
key y
click "$designer" 51 86 # preview
key y
sleep 1
take designer
end_window

# The dialog shows where the files lie, so they lie where a user would have them.
start_window
key ctrl+o
xdotool type --delay 400 维修/维修记录.txt
key Return
sleep 0.8
typed "An order"
key Return Return
take order
end_window
