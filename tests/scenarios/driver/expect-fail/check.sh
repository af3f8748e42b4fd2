#!/bin/sh
# Runs each *.scn.fail beside this script through the driver and checks that
# it fails as its header says: "# status: N" is the exit status, every
# "# says: TEXT" must appear in the output and no "# not: TEXT" may.
# Then one run of two files checks the summary line and the combined status.
# usage: check.sh PATH/TO/zavik-scenario
set -u
driver=${1:?usage: check.sh PATH/TO/zavik-scenario}
driver=$(cd "$(dirname "$driver")" && pwd)/$(basename "$driver")
here=$(cd "$(dirname "$0")" && pwd)
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
bad=0
for f in "$here"/*.scn.fail; do
    out=$("$driver" "$f" 2>/dev/null)
    status=$?
    want=$(sed -n 's/^# status: //p' "$f")
    problem=""
    [ "$status" = "$want" ] || problem="exit status $status, expected $want"
    case "$out" in *"0 passed, 1 failed"*) ;; *) problem="$problem; no summary line" ;; esac
    while IFS= read -r says; do
        case "$out" in *"$says"*) ;; *) problem="$problem; missing: $says" ;; esac
    done <<LIST
$(sed -n 's/^# says: //p' "$f")
LIST
    while IFS= read -r not; do
        [ -n "$not" ] || continue
        case "$out" in *"$not"*) problem="$problem; unwanted: $not" ;; esac
    done <<LIST
$(sed -n 's/^# not: //p' "$f")
LIST
    if [ -n "$problem" ]; then
        echo "FAIL $(basename "$f"): $problem"
        echo "$out" | sed 's/^/    /'
        bad=1
    else
        echo "ok $(basename "$f")"
    fi
done

# A passing and a failing file in one run: both reported, status 1.
out=$("$driver" "$here/../texts.scn" "$here/form-not-loaded.scn.fail" 2>/dev/null)
status=$?
case "$out" in
*"ok $here/../texts.scn"*"2 passed"*) ;;
*"ok $here/../texts.scn"*"1 passed, 1 failed") [ "$status" = 1 ] && echo "ok two files" || { echo "FAIL two files: status $status"; bad=1; } ;;
*) echo "FAIL two files:"; echo "$out" | sed 's/^/    /'; bad=1 ;;
esac
# shot writes beneath the working directory, not App.Path.
work=$(mktemp -d)
printf 'start\nshot MainForm "shots/main.png"\n' > "$work/shot.scn"
if (cd "$work" && "$driver" shot.scn >/dev/null 2>&1) &&
    [ "$(head -c 4 "$work/shots/main.png" | od -An -c | tr -d ' ')" = "211PNG" ]; then
    echo "ok shot"
else
    echo "FAIL shot: no PNG at shots/main.png in the working directory"
    bad=1
fi
rm -rf "$work"
exit $bad
