# To be sourced: a screen of its own, the program's window on it, and a user at mouse and keyboard. Ends with the script.
work=$(mktemp -d)
server= manager= desktop=
end_all() {
    for process in $desktop $manager $server; do kill "$process" 2> /dev/null || true; done
    wait 2> /dev/null || true
    rm -rf "$work"
}
trap end_all EXIT
fail() {
    echo "$(basename "$0"): $1" >&2
    exit 1
}
# Waits until a command succeeds, ten seconds at most or what $patience says.
wait_for() {
    tries=0
    until "$@" > /dev/null 2>&1; do
        tries=$((tries + 1))
        [ $tries -lt $((${patience:-10} * 10)) ] || fail "in vain: $*"
        sleep 0.1
    done
}

# A screen of this size, as 1920x1080, with the window manager of this name where one is given.
open_screen() {
    export DISPLAY
    # Servers that start at the same time can take each other's number: such a one is started anew.
    until [ -n "$server" ] && xdotool getmouselocation > /dev/null 2>&1; do
        [ -z "$server" ] || kill "$server" 2> /dev/null || true
        rm -f "$work/display"
        Xvfb -displayfd 3 -screen 0 "$1x24" -nolisten tcp -noreset 3> "$work/display" 2> "$work/server.txt" &
        server=$!
        wait_for test -s "$work/display"
        DISPLAY=:$(cat "$work/display")
    done
    LC_ALL=C.UTF-8 # Chinese names are typed
    export LC_ALL HOME="$work" QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR="$work"
    [ -n "${2:-}" ] || return 0
    "$2" > "$work/manager.txt" 2>&1 &
    manager=$!
    wait_for xprop -root _NET_SUPPORTING_WM_CHECK
}

# Starts ./tarvik as a Chinese user would; its window is $main, and has grown.
start_window() {
    env -u LC_ALL LANG=zh_CN.UTF-8 ./tarvik &
    desktop=$!
    wait_for xdotool search --onlyvisible --name '^Tarvik'
    main=$(xdotool search --onlyvisible --name '^Tarvik' | head -n 1)
    sleep 1.5
    xdotool windowfocus "$main" # where no window manager does
    sleep 0.3
}
end_window() {
    kill "$desktop"
    wait "$desktop" 2> /dev/null || true
    desktop=
}
