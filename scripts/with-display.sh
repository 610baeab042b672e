#!/bin/sh
# Runs a command with a virtual X server of its own: with-display.sh [--size WxH] COMMAND [ARGUMENT...]
#
# The server chooses a free display number itself, draws with software OpenGL and ends with the command, whose exit
# status is passed on. Listing the cases of a test program needs no display and gets none.
set -eu

size=1600x1000
if [ "${1:-}" = --size ]; then
    size=$2
    shift 2
fi
case " $* " in
*" --gtest_list_tests "*) exec "$@" ;;
esac

command -v Xvfb >/dev/null || {
    echo "with-display.sh: Xvfb is not installed; scripts/setup.sh installs it" >&2
    exit 1
}

folder=$(mktemp -d)
server=
cleanup() {
    [ -z "$server" ] || kill "$server" 2>/dev/null || true
    [ -z "$server" ] || wait "$server" 2>/dev/null || true
    rm -rf "$folder"
}
trap cleanup EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

mkfifo "$folder/number"
Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp +extension GLX 3>"$folder/number" 2>"$folder/log" &
server=$!
# Ends with the number, or with nothing when the server could not start.
read -r number <"$folder/number" || {
    echo "with-display.sh: Xvfb did not start:" >&2
    cat "$folder/log" >&2
    exit 1
}
export DISPLAY=":$number" LIBGL_ALWAYS_SOFTWARE=1
unset WAYLAND_DISPLAY XAUTHORITY
# OpenGL drivers leave memory behind and unload themselves, so that nobody can tell whose leak it was. What does not draw
# into a window is tested without a display, and there leaks count.
export ASAN_OPTIONS="${ASAN_OPTIONS:+$ASAN_OPTIONS:}detect_leaks=0"
status=0
"$@" || status=$?
exit "$status"
