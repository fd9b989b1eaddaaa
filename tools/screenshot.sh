#!/usr/bin/env bash
# Runs the program of a laid-out tree in a virtual display of 1280 x 1024, lets it replay, and saves what the
# display shows: screenshot.sh TREE PICTURE.png [SECONDS]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
tree=$1
picture=$2
seconds=${3:-15}

scratch=$(mktemp -d)
server=
program=
finish() {
    local process
    for process in $program $server; do # the program first, so that it does not lose its display
        if kill "$process" 2>/dev/null; then wait "$process" 2>/dev/null || true; fi
    done
    rm -rf "$scratch"
}
trap finish EXIT
trap 'exit 130' INT TERM

mkfifo "$scratch/display"
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>"$scratch/display" 2>"$scratch/server.log" &
server=$!
if ! read -r -t 30 number <"$scratch/display"; then
    echo "keelview: the virtual display did not start:" >&2
    cat "$scratch/server.log" >&2
    exit 1
fi
export DISPLAY=:$number QT_QPA_PLATFORM=xcb
unset WAYLAND_DISPLAY

tools/start_program.sh "$tree" &
program=$!
window=
for ((tenths = 0; tenths < 600; tenths++)); do
    if ! kill -0 "$program" 2>/dev/null; then
        echo "keelview: the program ended before its window stood" >&2
        exit 1
    fi
    # The race display is the window whose title names the race file in parentheses.
    window=$(xdotool search --onlyvisible --name '\(.*\.txt\)' 2>/dev/null | head -n 1) || true
    [ -z "$window" ] || break
    sleep 0.1
done
if [ -z "$window" ]; then
    echo "keelview: no window with a race appeared within a minute; the picture shows what there is" >&2
fi
sleep "$seconds"
/usr/bin/import -window root "$picture"
[ -n "$window" ] || exit 1
echo "keelview: no display here, so the replay ran in a virtual one; its picture after $seconds seconds: $(realpath "$picture")"
