#!/bin/bash
# Runs a command on a desktop of its own: X server, session bus, window manager and a panel with a tray.
# Usage: session.sh [--screen WIDTHxHEIGHT] [--bar EDGE-SIDE] [--scale FACTOR] [--compositing yes|no]
#                   [--resizable yes|no] LOG_FOLDER COMMAND [ARGUMENT...]
#   EDGE is where the bar lies, top or bottom, and SIDE where the tray is on it, left, middle or right. The command finds them
#   in SESSION_BAR, and the factor by which the tested program is to be enlarged in SESSION_SCALE. A resizable
#   screen takes other sizes from xrandr.
set -euo pipefail

fail_with_usage() {
    sed -n '3,7s/^# //p' "$0" >&2
    exit 2
}

screen=1280x800
bar=top-right
scale=1
compositing=no
resizable=no
while [[ ${1-} == --* ]]; do
    [ $# -ge 2 ] || fail_with_usage
    case $1 in
        --screen) screen=$2 ;;
        --bar) bar=$2 ;;
        --scale) scale=$2 ;;
        --compositing) compositing=$2 ;;
        --resizable) resizable=$2 ;;
        *) fail_with_usage ;;
    esac
    shift 2
done
[ $# -ge 2 ] || fail_with_usage

# The panel program's own numbers for the edges of a screen.
case $bar in
    top-*) edge=6 ;;
    bottom-*) edge=10 ;;
    *) fail_with_usage ;;
esac
case $bar in
    *-left) plugins='2 1 3' ;;
    *-middle) plugins='1 2 3' ;;
    *-right) plugins='1 3 2' ;;
    *) fail_with_usage ;;
esac
scripts=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$1"
logs=$(cd "$1" && pwd)
shift
scratch=$(mktemp -d)
x_server=
session=

clean_up() {
    for process in ${session:+"-$session"} $x_server; do
        kill -- "$process" 2>/dev/null || true
        wait "${process#-}" 2>/dev/null || true
    done
    rm -rf "$scratch"
}
trap clean_up EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

mkfifo "$scratch/display"
# The usual server has one size only. Without -noreset each starts anew when its only client leaves, as xdotool does
# below, and then turns down who is about to come, such as the window manager.
if [ "$resizable" = yes ]; then
    server=(Xtigervnc -noreset -geometry "$screen" -depth 24 -rfbport -1 -rfbunixpath "$scratch/vnc" -SecurityTypes None)
else
    server=(Xvfb -noreset -screen 0 "${screen}x24")
fi
"${server[@]}" -displayfd 3 -nolisten tcp 3>"$scratch/display" >"$logs/xvfb.log" 2>&1 &
x_server=$!
read -r -t 120 display <"$scratch/display"

: >"$logs/xfce4-panel.log"
mkdir -p -m 700 "$scratch/runtime"
settings=$scratch/home/.config/xfce4/xfconf/xfce-perchannel-xml
mkdir -p "$settings"
read -r first second third <<<"$plugins"
sed -e "s/@edge@/$edge/" -e "s/@first@/$first/" -e "s/@second@/$second/" -e "s/@third@/$third/" \
    "$scripts/xfce4-panel.xml.in" >"$settings/xfce4-panel.xml"

# A D-Bus daemon of its own, so that nothing started here finds a session of the person who runs this;
# a process group of its own, so that it can be ended whole.
setsid env -u WAYLAND_DISPLAY -u XAUTHORITY -u DBUS_SESSION_BUS_ADDRESS -u SESSION_MANAGER -u GTK_MODULES \
    DISPLAY=":$display" HOME="$scratch/home" XDG_RUNTIME_DIR="$scratch/runtime" \
    XDG_CONFIG_HOME="$scratch/home/.config" XDG_CACHE_HOME="$scratch/home/.cache" \
    XDG_DATA_HOME="$scratch/home/.local/share" XDG_STATE_HOME="$scratch/home/.local/state" \
    XDG_CURRENT_DESKTOP=XFCE XDG_SESSION_TYPE=x11 NO_AT_BRIDGE=1 LC_ALL=C.UTF-8 LANGUAGE=en \
    QT_QPA_PLATFORM=xcb SESSION_LOGS="$logs" SESSION_SCRIPTS="$scripts" SESSION_BAR="$bar" SESSION_SCALE="$scale" \
    COMPOSITING="$compositing" \
    dbus-run-session -- bash -c '
        if [ "$COMPOSITING" = yes ]; then xcompmgr >"$SESSION_LOGS/xcompmgr.log" 2>&1 & fi
        openbox >"$SESSION_LOGS/openbox.log" 2>&1 &
        . "$SESSION_SCRIPTS/start-bar.sh"
        "$@" 2>&4 4>&- && status=0 || status=$?
        kill $(jobs -p)
        wait
        exit $status' session "$@" 4>&2 2>"$logs/dbus.log" &
session=$!
wait "$session"
