#!/bin/sh
# Runs each *.scn.fail here through the driver: its first line "# N TEXT" is
# the exit status and a text the output must hold, a "# not: TEXT" line one it
# must not. Then a passing and a failing file in one run, and a shot.
# usage: check.sh PATH/TO/zavik-scenario
set -u
driver=$(cd "$(dirname "${1:?usage: check.sh PATH/TO/zavik-scenario}")" && pwd)/$(basename "$1")
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
bad=0
report() { # NAME PROBLEMS OUTPUT
    if [ -z "$2" ]; then echo "ok $1"; else printf 'FAIL %s:%s\n%s\n' "$1" "$2" "$3" | sed '2,$s/^/    /'; bad=1; fi
}
for f in "$here"/*.scn.fail; do
    out=$("$driver" "$f" 2>/dev/null)
    status=$?
    head=$(sed -n '1s/^# //p' "$f") not=$(sed -n 's/^# not: //p' "$f") p=""
    [ "$status" = "${head%% *}" ] || p="$p exit status $status;"
    case "$out" in *"${head#* }"*"0 passed, 1 failed") ;; *) p="$p no \"${head#* }\" before the summary;" ;; esac
    [ -z "$not" ] || case "$out" in *"$not"*) p="$p unwanted \"$not\";" ;; esac
    report "$(basename "$f")" "$p" "$out"
done
echo 'expect file none absent' > "$work/pass.scn"
out=$("$driver" "$work/pass.scn" "$here/form-not-loaded.scn.fail" 2>/dev/null)
case "$? $out" in "1 ok $work/pass.scn"*"1 passed, 1 failed") p="" ;; *) p=" not both reported with status 1" ;; esac
report "two files" "$p" "$out"
# shot writes beneath the working directory, not App.Path.
printf 'start\nshot MainForm "shots/main.png"\n' > "$work/shot.scn"
(cd "$work" && "$driver" shot.scn >/dev/null 2>&1)
[ "$(head -c 4 "$work/shots/main.png" 2>/dev/null | od -An -c | tr -d ' ')" = "211PNG" ] && p="" ||
    p=" no PNG at shots/main.png in the working directory"
report shot "$p" ""
rm -rf "$work"
exit $bad
