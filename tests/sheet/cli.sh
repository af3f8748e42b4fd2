#!/bin/sh
# zavik-deck as a user runs it: a deck exported and read back unchanged, a
# sheet with good and bad rows previewed without a change and then applied,
# and the exit status of each kind of failure.
# Usage: cli.sh ZAVIK-DECK
set -u
deck=$1
work=$(mktemp -d)
trap 'chmod -R u+w "$work"; rm -rf "$work"' EXIT
fail() { echo "FAIL: $*"; exit 1; }

mkdir "$work/cards"
for f in back.bmp knight.bmp queen.bmp king.bmp ace.gif; do : > "$work/cards/$f"; done
printf '[GAME]\r\ndirectory=cards\r\n[COMMON 1]\r\ndecksize=2\r\nimg_back=back.bmp\r\ndeal=5\r\nsplit=true\r\ncard1=(x4)knight.bmp,,Value=3|Colour=red\r\ncard2=queen.bmp\r\n[PROP LISTS]\r\ntotal=1\r\nlist1=F,Value,Colour\r\n' > "$work/Duel.game"
cp "$work/Duel.game" "$work/before"

"$deck" export "$work/Duel.game" "common 1" "$work/out.csv"; status=$?
[ $status -eq 0 ] || fail "export: status $status"
out=$("$deck" import "$work/Duel.game" "COMMON 1" "$work/out.csv" --apply); status=$?
[ $status -eq 0 ] || fail "import of the export: status $status: $out"
echo "$out" | grep -qx "0 to add, 0 to change, 2 unchanged, 0 to remove, 0 refused" || fail "round trip: $out"
cmp -s "$work/Duel.game" "$work/before" || fail "an unchanged import changed the file"

printf 'image;copies;colour\nknight.bmp;2;blue\nace.gif;;\nnope.bmp;;\nqueen.bmp;;a,b\n' > "$work/in.csv"
out=$("$deck" import "$work/Duel.game" "COMMON 1" "$work/in.csv"); status=$?
[ $status -eq 1 ] || fail "preview with refusals: status $status"
cmp -s "$work/Duel.game" "$work/before" || fail "a preview changed the file"
"$deck" import "$work/Duel.game" "COMMON 1" "$work/in.csv" --json | grep -q '"refused"' || fail "--json"
"$deck" import "$work/Duel.game" "COMMON 1" "$work/in.csv" --apply >/dev/null; status=$?
[ $status -eq 1 ] || fail "apply with refusals: status $status"
grep -q '^card1=(x2)knight.bmp,,Value=3|Colour=blue' "$work/Duel.game" || fail "card1 not changed"
grep -q '^card3=ace.gif' "$work/Duel.game" || fail "ace.gif not added"
grep -q '^decksize=3' "$work/Duel.game" || fail "decksize"
"$deck" export "$work/Duel.game" "COMMON 1" | grep -q '^queen.bmp,1,,' || fail "export to stdout"

# Failures: status 2 and a message, the game file untouched.
cp "$work/Duel.game" "$work/applied"
printf 'copies\n1\n' > "$work/noimage.csv"
printf 'image\n"open\n' > "$work/open.csv"
for args in "import $work/Duel.game COMMON_1 $work/in.csv" "export $work/none.game COMMON 1" \
            "frobnicate" "" "import $work/Duel.game" "export --apply $work/Duel.game" \
            "import $work/Duel.game X $work/missing.csv" ; do
  set -- $args
  "$deck" "$@" >/dev/null 2>"$work/err"; status=$?
  [ $status -eq 2 ] || fail "'$args': status $status"
  grep -q '^zavik-deck: ' "$work/err" || fail "'$args': no message"
done
for csv in noimage open; do
  "$deck" import "$work/Duel.game" "COMMON 1" "$work/$csv.csv" --apply >/dev/null 2>"$work/err"; status=$?
  [ $status -eq 2 ] || fail "$csv.csv: status $status"
done
chmod a-w "$work/Duel.game"
printf 'image\nqueen.bmp\n' > "$work/queen.csv"
"$deck" import "$work/Duel.game" "COMMON 1" "$work/queen.csv" --apply --remove-missing >/dev/null 2>"$work/err"; status=$?
[ $status -eq 2 ] || fail "read-only game: status $status"
grep -q 'cannot be written' "$work/err" || fail "read-only game: $(cat "$work/err")"
cmp -s "$work/Duel.game" "$work/applied" || fail "a refused write changed the file"
echo "ok"
