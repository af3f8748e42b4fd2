#!/bin/sh
# zavik-deck odds and deal as a user runs them: values a hand can be checked
# against by hand, a seed that deals the same again, bad input with a clear
# word and status 2, and a game file that stays as it was.
# Usage: cli.sh ZAVIK-DECK
set -u
deck=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*"; exit 1; }

printf '[GAME]\r\nplayers=2\r\n[COMMON 1]\r\ndecksize=4\r\ndeal=2\r\ncard1=(x4)knight.bmp,,Value=3|Colour=red\r\ncard2=queen.bmp,,Colour=red\r\ncard3=(x2)king.bmp\r\ncard4=(x0)joker.bmp\r\n[COMMON 2]\r\ndecksize=0\r\nimg_back=back.bmp\r\ndeal=letters\r\n[PROP LISTS]\r\ntotal=1\r\nlist1=F,Colour\r\n' > "$work/Duel.game"
cp "$work/Duel.game" "$work/before"

# Two of 7 cards: two knights in 6 of the 21 pairs, two red cards in 10.
out=$("$deck" odds "$work/Duel.game" "COMMON 1" --at-least 2); status=$?
[ $status -eq 0 ] || fail "odds: status $status"
echo "$out" | grep -q "^knight.bmp	4	0.285714286	0.285714286	1.142857$" || fail "knight: $out"
echo "$out" | grep -q "^Colour = red	5	0.476190476	" || fail "red: $out"
echo "$out" | grep -q '^note: Row 4 "(x0)joker.bmp" has 0 copies: no card.$' || fail "joker: $out"
"$deck" odds "$work/Duel.game" "common 1" --hand 3 --json | grep -q '"atLeast": 0.9714285714285714' ||
  fail "--json: an ace in 3: 1 - C(3,3)/C(7,3)"

# One seed, one deal; a word is a seed too, with a note.
a=$("$deck" deal "$work/Duel.game" "COMMON 1" --seed 42 --hands 3 --hand 2)
b=$("$deck" deal "$work/Duel.game" "COMMON 1" --hands 3 --seed 42 --hand 2)
[ "$a" = "$b" ] || fail "the same seed dealt twice differs"
[ "$(echo "$a" | grep -c '^hand [123]: [a-z]*\.bmp, [a-z]*\.bmp$')" -eq 3 ] || fail "deal: $a"
echo "$a" | grep -q '^pile: 1 of 7 cards left$' || fail "pile: $a"
"$deck" deal "$work/Duel.game" "COMMON 1" --seed tuesday | grep -q '^note: Seed "tuesday" is no number' ||
  fail "a seed of letters"
"$deck" deal "$work/Duel.game" "COMMON 1" --seed 1 --hand 10000 | grep -q 'fewer than the 20000' ||
  fail "a pile too small"

# A deck of a back image only, and a deal of letters: empty, said so, no crash.
out=$("$deck" odds "$work/Duel.game" "COMMON 2"); status=$?
[ $status -eq 0 ] || fail "empty deck: status $status"
echo "$out" | grep -q '^note: The deck has no cards' || fail "empty deck: $out"
echo "$out" | grep -q '^note: Cards to deal "letters" is no number' || fail "letters: $out"

g=$work/Duel.game
for args in "odds|$g|COMMON_1" "odds|$work/none.game|COMMON 1" "odds|$g|COMMON 1|--hand|x" \
            "deal|$g|COMMON 1|--at-least|2" "odds|$g|COMMON 1|--seed|1" "export|$g|COMMON 1|--hand|2" \
            "deal|$g|COMMON 1|--seed" "odds|$g|COMMON 1|extra" "deal|$g|COMMON 1|--hands|2x"; do
  IFS='|'; set -- $args; unset IFS
  "$deck" "$@" >/dev/null 2>"$work/err"; status=$?
  [ $status -eq 2 ] || fail "'$args': status $status"
  grep -q '^zavik-deck: ' "$work/err" || fail "'$args': no message"
done
cmp -s "$work/Duel.game" "$work/before" || fail "odds or deal changed the game file"
echo "ok"
