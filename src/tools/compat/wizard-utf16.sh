#!/bin/sh
# A UTF-16 game file through the wizard itself: loaded and saved by the
# program's forms, then read back by the Windows profile functions under Wine,
# with every value in place and the file still in UTF-16.
# Usage: wizard-utf16.sh ZAVIK-SCENARIO PROFILECALLS.EXE WINE WORK-DIR
set -eu
scenario=$1 exe=$2 wine=$3 work=$4
here=$(cd "$(dirname "$0")" && pwd)
work=$(cd "$work" && pwd)
app="$work/wizard-utf16"
rm -rf "$app" && mkdir -p "$app/cards"
# The file as a Windows editor writes it: mark FF FE, UTF-16LE, CR LF.
{ printf '\377\376'; printf '[GAME]\r\nname=Unicode\r\ndescription=Deux côtés\r\nplayers=2\r\ndirectory=cards\r\ncommon_decks=0\r\n[Player 1]\r\nname=Nord\r\n[Player 2]\r\nname=Süd\r\n' | iconv -f UTF-8 -t UTF-16LE; } > "$app/Unicode.game"
QT_QPA_PLATFORM=offscreen "$scenario" --app-dir "$app" "$here/utf16-game.scn"

head=$(od -An -tx1 -N2 "$app/Unicode.game" | tr -d ' ')
[ "$head" = fffe ] || { echo "FAIL: the saved file starts with $head, not the UTF-16 mark"; exit 1; }

hex() { printf '%s' "$1" | iconv -f UTF-8 -t CP1252 | od -An -tx1 | tr -d ' \n'; }
winpath=$(printf 'Z:%s' "$app/Unicode.game" | tr / '\\')
{
  echo "C $(printf '%s' "$winpath" | od -An -tx1 | tr -d ' \n')"
  for pair in "GAME description" "GAME players" "GAME directory" "Player 1 name" "Player 2 name"; do
    key=${pair##* } section=${pair% *}
    echo "R $(hex "$section") $(hex "$key")"
  done
} > "$work/wizard-utf16.calls"
WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" WINEPREFIX="${WINEPREFIX:-$work/prefix}" \
  "$wine" "$exe" < "$work/wizard-utf16.calls" > "$work/wizard-utf16.answers"

expect() { # the value the Windows functions must read, in answer line $1
  got=$(grep '^R ' "$work/wizard-utf16.answers" | sed -n "${1}p" | tr -d '\r')
  want="R $(printf '%s' "$2" | iconv -f UTF-8 -t CP1252 | wc -c | tr -d ' ') $(hex "$2")"
  [ "$got" = "$want" ] || { echo "FAIL: read $1 gave '$got', not '$want' ($2)"; exit 1; }
}
expect 1 "Zwei Seiten – à deux"
expect 2 "2"
expect 3 "cards"
expect 4 "Nørd"
expect 5 "Süd"
echo "ok: a UTF-16 game saved in the wizard reads back whole under Wine"
