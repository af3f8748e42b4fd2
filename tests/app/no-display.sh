#!/bin/sh
# Started where there is no display, the wizard says so in one line and exits
# with status 1, instead of Qt's abort with its plugin diagnostics.
wizard="$1"
out=$(env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM "$wizard" 2>&1)
status=$?
lines=$(printf '%s\n' "$out" | wc -l)
if [ "$status" -ne 1 ] || [ "$lines" -ne 1 ]; then
    echo "expected one line and status 1, got status $status and:"
    printf '%s\n' "$out"
    exit 1
fi
case "$out" in
*"no display"*"xvfb-run"*) exit 0 ;;
*) echo "unexpected message: $out"; exit 1 ;;
esac
