#!/bin/sh
# The layer script passes the real tree and refuses a circle made by hand.
set -eu
script=$1 src=$2
python3 "$script" "$src"
t=$(mktemp -d); trap 'rm -rf "$t"' EXIT
mkdir -p "$t/store" "$t/wizard" "$t/tools/a"
printf '#include "wizard/W.h"\n' > "$t/store/S.h"
printf '#include "store/S.h"\n' > "$t/wizard/W.h"
printf '#include "store/S.h"\n' > "$t/tools/a/main.cpp"
if out=$(python3 "$script" "$t"); then echo "a circle passed: $out"; exit 1; fi
echo "$out" | grep -q 'store -> wizard -> store' || { echo "unexpected: $out"; exit 1; }
