#!/bin/sh
# Drives the program under a window manager: its windows among each other while the main one is maximised, and a file
# that another program's pointer drops on it.
# usage: managed_screen.sh PROGRAM DRAG_SOURCE
set -eu
program=$1 drag_source=$2
. "$(dirname "$0")/../../../tools/own_screen.sh"

open_screen 1920x1080 openbox
mkdir "$work/installation"
cp "$program" "$work/installation/tarvik"
printf 'apple\tred\r\nplum\tblue\r\nplum\tgreen\r\n' > "$work/installation/coclus.txt"
printf 'plum\tdropped\r\n' > "$work/installation/dropped.txt"
cd "$work/installation"

shown() {
    xdotool search --onlyvisible --name "$1"
}
# The window of column numbers, or a message: the program's window beside the main one.
beside() {
    shown '^Tarvik ' | grep -v "^$main\$"
}
alone() {
    ! beside
}
maximised() {
    xprop -id "$main" _NET_WM_STATE | grep -q MAXIMIZED_VERT
}
active() {
    [ "$(xdotool getactivewindow)" = "$main" ]
}
inactive() {
    ! active
}
# The main window takes the keys, and the window of column numbers stands in front of it.
in_front() {
    active || return 1
    stack=$(xprop -root _NET_CLIENT_LIST_STACKING)
    main_id=$(printf '0x%x' "$main") columns_id=$(printf '0x%x' "$(beside)")
    case $stack in *"$main_id"*"$columns_id"*) return 0 ;; *) return 1 ;; esac
}
# Asks for what the query box holds.
query() {
    rm -f betweenp.txt
    xdotool key Escape
    wait_for grep -q "$1" betweenp.txt
    wait_for inactive # the message
    xdotool key Return
    wait_for in_front
}
# Presses the button at a place of a window, in hundredths of its width and height.
press() {
    eval "$(xdotool getwindowgeometry --shell "$1")"
    xdotool mousemove --window "$1" $((WIDTH * $2 / 100)) $((HEIGHT * $3 / 100)) click 1
}

start_window
wmctrl -i -r "$main" -b add,maximized_vert,maximized_horz
wait_for maximised
xdotool type plum
query green
press "$main" 20 30 # a pane, far from the other window
sleep 0.5
in_front || fail "a click hides the window of column numbers"
press "$(beside)" 36 91 # 确认
wait_for alone
wait_for active
xdotool key F6 # from the pane
query green
maximised || fail "the main window is not maximised any more"

# One message follows another: the designer, which they are about, is in front again when both have gone.
press "$main" 90 90 # the background: letters are letters again
sleep 0.5
xdotool key ctrl+a
xdotool type 'An appear'
xdotool key Return
designer_active() {
    xdotool getactivewindow getwindowname | grep -q 设计器
}
wait_for designer_active
designer=$(xdotool getactivewindow)
press "$designer" 33 87 # 保存参数
for answer in Return y; do
    wait_for inactive
    sleep 0.5
    xdotool key "$answer"
done
wait_for test -s automation.bin
wait_for designer_active
xdotool key F6
wait_for active
xdotool key ctrl+a
xdotool type plum

"$drag_source" dropped.txt &
manager="$manager $!"
wait_for shown '^drag source'
source=$(shown '^drag source')
xdotool windowactivate --sync "$source"
xdotool mousemove --window "$source" 100 60
sleep 0.3
xdotool mousedown 1
sleep 0.3
for step in 1 2 3 4 5 6; do
    xdotool mousemove $((600 + 20 * step)) $((300 + 10 * step))
    sleep 0.2
done
xdotool mouseup 1
wait_for active
xdotool mousemove --window "$main" 300 10
query dropped
echo "managed screen: in front while maximised, set aside, back; dropped"
