#!/bin/sh
# Runs a script of real mouse and key events against the program on an X
# display with a window manager, where this machine can give one; 77 = skipped.
tool="$1"; script="$2"; appdir="$3"
[ -x "$tool" ] || { echo "no real-input tool at $tool: skipped"; exit 77; }
for c in Xvfb openbox xdotool dbus-run-session; do
    command -v "$c" >/dev/null 2>&1 || { echo "no $c: skipped"; exit 77; }
done
/usr/bin/python3 -c 'import pyatspi' 2>/dev/null || { echo "no pyatspi: skipped"; exit 77; }
# The program must come up on the X display, not on the offscreen one the suite runs with.
unset QT_QPA_PLATFORM
exec "$tool" "$script" "$appdir"
