#!/bin/sh
# zavik-pack as a user runs it: the exit status says done (0), refused (1) or
# a bad command line / unreadable file (2).
# Usage: cli.sh ZAVIK-PACK
set -u
zp=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*"; exit 1; }
expect() { want=$1; shift; "$@" >"$work/out" 2>&1; got=$?; [ $got -eq $want ] || fail "$* gave $got, not $want: $(cat "$work/out")"; }

mkdir -p "$work/src/pics" "$work/into"
printf '[GAME]\r\ndirectory=pics\r\ndesktop=desk.bmp\r\ncommon_decks=1\r\n[COMMON 1]\r\ndecksize=1\r\ncard1=gone.jpg\r\n' > "$work/src/G.game"
head -c 5000 /dev/urandom > "$work/src/pics/desk.bmp"

expect 2 "$zp"
expect 2 "$zp" pack
expect 2 "$zp" pack "$work/nothing.game"
expect 2 "$zp" unpack "$work/nothing.zip"
expect 2 "$zp" frobnicate
expect 0 "$zp" pack "$work/src/G.game"
grep -q "gone.jpg" "$work/out" || fail "the missing image is not named: $(cat "$work/out")"
[ -f "$work/src/G.game.zip" ] || fail "no G.game.zip beside the game"
expect 0 "$zp" unpack "$work/src/G.game.zip" --into "$work/into"
cmp -s "$work/src/pics/desk.bmp" "$work/into/pics/desk.bmp" || fail "the image differs"

# A different game of the same name: refused unless told what to do.
printf '[GAME]\r\n' > "$work/into/G.game"
expect 1 "$zp" unpack "$work/src/G.game.zip" --into "$work/into"
grep -q -- "--keep-both" "$work/out" || fail "no hint at the options: $(cat "$work/out")"
expect 0 "$zp" unpack "$work/src/G.game.zip" --into "$work/into" --keep-both
grep -q '^directory=pics 2' "$work/into/G 2.game" || fail "the copy does not name its folder"
expect 0 "$zp" unpack "$work/src/G.game.zip" --into "$work/into" --replace
cmp -s "$work/src/G.game" "$work/into/G.game" || fail "--replace left the old game"

# A hostile archive, if python is there to make one: refused, nothing left.
if command -v python3 >/dev/null; then
  python3 -c "
import zipfile,sys
z=zipfile.ZipFile(sys.argv[1],'w')
z.writestr('H.game','[GAME]\r\n'); z.writestr('../../evil','x')" "$work/evil.zip"
  ls -A "$work/into" > "$work/before"
  expect 1 "$zp" unpack "$work/evil.zip" --into "$work/into"
  grep -q '\.\./\.\./evil' "$work/out" || fail "the refusal does not name the entry: $(cat "$work/out")"
  ls -A "$work/into" | cmp -s - "$work/before" || fail "a refused archive left something"
  [ ! -e "$work/evil" ] && [ ! -e "$(dirname "$work")/evil" ] || fail "an entry got out"
fi
# Installed (the package's files beside the program): the user's own folder,
# made at first use with those files, is where an unpack goes by default.
mkdir -p "$work/usr/bin" "$work/usr/share/zavik-wizard" "$work/home"
cp "$zp" "$work/usr/bin/zavik-pack"
echo notes > "$work/usr/share/zavik-wizard/help.dat"
HOME="$work/home" XDG_DATA_HOME= expect 0 "$work/usr/bin/zavik-pack" unpack "$work/src/G.game.zip"
[ -f "$work/home/.local/share/zavik-wizard/help.dat" ] || fail "the user's folder was not set up"
[ -f "$work/home/.local/share/zavik-wizard/G.game" ] || fail "the game is not in the user's folder"
echo "ok"
