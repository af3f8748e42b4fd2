#!/bin/sh
# zavik-check as a user runs it: the sample game is clean, a broken copy of it
# gives findings of each severity, and the exit status says which.
# Usage: cli.sh ZAVIK-CHECK ZAVIK-SAMPLEGEN
set -u
check=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*"; exit 1; }

# The sample game as a first start makes it, not as a user may have changed it.
app="$work/app"
"$2" "$app" >/dev/null 2>&1 || fail "the sample game could not be made"
cp -r "$app/Duel.game" "$app/duelcards" "$work/" || fail "no sample game in $app"
out=$("$check" "$work/Duel.game"); status=$?
[ $status -eq 0 ] || fail "the sample game: status $status, findings: $out"
echo "$out" | grep -qx "0 errors, 0 warnings, 0 notes in 1 file" || fail "sample summary: $out"

# A finding of each severity; the rules' texts are held by the unit tests.
sed -e 's/^players=.*/players=7/' -e 's/^desktop=.*/desktop=TABLE.BMP/' -e 's/^deal=.*/deal=lots/' \
    "$app/Duel.game" > "$work/Broken.game"
printf '[COMMON 9]\r\ndecksize=0\r\n' >> "$work/Broken.game"
cp "$work/Broken.game" "$work/Broken.before"
out=$("$check" "$work/Broken.game"); status=$?
[ $status -eq 1 ] || fail "the broken game: status $status"
cmp -s "$work/Broken.game" "$work/Broken.before" || fail "the check changed the file"
for expected in \
    ': error: The number of players is "7", not a whole number from 1 to 6' \
    ': warning: The desktop image names "TABLE.BMP", but the file is "table.bmp"' \
    ': error: The cards to deal of common deck 1 are "lots", not a whole number' \
    ': note: [COMMON 9] is above the number of common decks'; do
  echo "$out" | grep -F -q "$expected" || fail "missing finding '$expected' in: $out"
done
echo "$out" | grep -q '^'"$work"'/Broken.game:[0-9][0-9]*: error: ' || fail "no FILE:LINE: form: $out"

"$check" --json "$work/Broken.game" > "$work/out.json"; status=$?
[ $status -eq 1 ] || fail "--json: status $status"
grep -q '"severity": "error"' "$work/out.json" || fail "--json holds no findings"
grep -q '"where": "common deck"' "$work/out.json" || fail "--json says not where"

# Warnings and notes alone are no failure: a player without a name, a leftover.
sed -e 's/^name=North/name=/' "$app/Duel.game" > "$work/Warned.game"
printf '[COMMON 9]\r\ndecksize=0\r\n' >> "$work/Warned.game"
out=$("$check" "$work/Warned.game"); status=$?
[ $status -eq 0 ] || fail "warnings and notes alone: status $status: $out"
echo "$out" | grep -q "0 errors, 1 warning, 1 note" || fail "warnings and notes: $out"

for args in "$work/none.game" "" "--frobnicate $work/Duel.game"; do
  "$check" $args >/dev/null 2>&1; status=$?
  [ $status -eq 2 ] || fail "'$args': status $status"
done
echo "ok"
