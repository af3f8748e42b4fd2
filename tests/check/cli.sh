#!/bin/sh
# zavik-check as a user runs it: the sample game is clean, a broken copy of it
# shows one finding of each rule family, and the exit status says which.
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
[ $status -eq 0 ] || fail "the sample game: status $status, findings:
$out"
echo "$out" | grep -qx "0 errors, 0 warnings, 0 notes in 1 file" || fail "sample summary: $out"

# One fault of each family. The card line of the first common deck gets a
# count of 0, a property in no list and a value with "=".
sed -e 's/^players=.*/players=7/' \
    -e 's/^desktop=.*/desktop=TABLE.BMP/' \
    -e '0,/^card1=.*/s//card1=(x0)knight.bmp,,Value=3=4|Nothing=1/' \
    -e 's/^deal=.*/deal=lots/' \
    -e 's/^\(list1=[^,]*\),\([^,]*\)/\1,\2,\2/' \
    -e 's/^report1=.*/report1=Total,AVERAGE,HAND,TRUE,Value/' \
    "$app/Duel.game" > "$work/Broken.game"
printf '[COMMON 9]\r\ndecksize=0\r\n' >> "$work/Broken.game"
cp "$work/Broken.game" "$work/Broken.before"
out=$("$check" "$work/Broken.game"); status=$?
[ $status -eq 1 ] || fail "the broken game: status $status"
cmp -s "$work/Broken.game" "$work/Broken.before" || fail "the check changed the file"
for expected in \
    ': error: The number of players is "7", not a whole number from 1 to 6' \
    ': warning: Player 3 has no name' \
    ': warning: The desktop image names "TABLE.BMP", but the file is "table.bmp"' \
    ': error: Card 1 of common deck 1: the copies in "(x0)knight.bmp" read as 0' \
    ': error: Card 1 of common deck 1: the value of "Value" holds "="' \
    ': warning: Card 1 of common deck 1 has a value for "Nothing"' \
    ': error: The cards to deal of common deck 1 are "lots", not a whole number' \
    ': warning: Property list 1 names the property "' \
    ': error: Report 1 has the type "AVERAGE"' \
    ': note: [COMMON 9] is above the number of common decks'; do
  echo "$out" | grep -F -q "$expected" || fail "missing finding '$expected' in:
$out"
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

"$check" "$work/none.game" >/dev/null 2>&1; status=$?
[ $status -eq 2 ] || fail "a missing file: status $status"
"$check" >/dev/null 2>&1; status=$?
[ $status -eq 2 ] || fail "no arguments: status $status"
"$check" --frobnicate "$work/Duel.game" >/dev/null 2>&1; status=$?
[ $status -eq 2 ] || fail "an unknown option: status $status"
echo "ok"
