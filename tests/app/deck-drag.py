#!/usr/bin/python3
"""On a real display with a window manager, by real mouse and keys: a row of the image list dragged onto the
card list becomes a card, resting on a name shows its picture beside the list, and a number typed into the
deck sheet's copies cell changes the card on the page."""
import os, sys, time
from harness import *

appdir = os.environ["APPDIR"]
with open(os.path.join(appdir, "Duel.game"), "wb") as f:
    f.write(b"[GAME]\r\ndirectory=duelcards\r\ncommon_decks=1\r\n[COMMON 1]\r\ndecksize=1\r\ncard1=knight.bmp\r\n")
a = app()
main = [w for w in a if w is not None and w.name.startswith("Zavik Wizard - ver")][0]
fails = []
def expect(what, ok):
    if not ok: fails.append(what)
def items(list_name):
    return [n.name for l in find(main, "list", list_name) for n in nodes(l) if n.getRoleName() == "list item"]

xdo("type", "--delay", "40", "Duel"); time.sleep(0.3)
click(main, "push button", "Forward >>"); time.sleep(0.5)
click(main, "push button", "Forward >>"); time.sleep(0.5)
click(main, "push button", "Show Common Deck #1"); time.sleep(0.8)
cards = [l for l in find(main, "list", "") + nodes(main) if l.getRoleName() == "list" and "Cards:" in l.name][0]
queen = [n for n in find(main, "list item", "queen.bmp")][0]
(x1, y1), (x2, y2) = center(queen), center(cards)

# Resting on a name: its picture beside the list.
xdo("mousemove", x1, y1); time.sleep(0.3); xdo("mousemove", x1 + 2, y1); time.sleep(1.0)
shown = [l for w, labels in dialogs() for l in labels]
expect("resting on queen.bmp shows its preview", "queen.bmp" in shown)

# The drag, in steps as a hand moves.
xdo("mousedown", "1"); time.sleep(0.2)
for i in range(1, 11):
    xdo("mousemove", x1 + (x2 - x1) * i // 10, y1 + (y2 - y1) * i // 10); time.sleep(0.05)
time.sleep(0.3); xdo("mouseup", "1"); time.sleep(0.8)
def rows():
    return [cards.getChildAtIndex(i).name for i in range(cards.childCount)]
names = rows()
expect("the dragged row is a card: %r" % names, names == ["knight.bmp", "queen.bmp"])

# The deck sheet: the copies of the new card typed in its cell.
xdo("key", "ctrl+d"); time.sleep(1.0)
sheet = [w for w in app() if w is not None and w.name == "Deck Sheet"]
expect("Ctrl+D opens the deck sheet", bool(sheet))
if sheet:
    table = find(sheet[0], "table", "Deck Sheet")[0].queryTable()
    cell = table.getAccessibleAt(1, 2)
    x, y = center(cell); xdo("mousemove", x, y, "click", "1"); time.sleep(0.4)
    xdo("type", "3"); xdo("key", "Return"); time.sleep(0.6)
    names = rows()
    expect("3 typed into the copies cell: %r" % names, names == ["knight.bmp", "(x3)queen.bmp"])
    expect("the label recounts", cards.name == "Cards: 2 (tot: 4)" or any("tot: 4" in n.name for n in nodes(main)))
print("\n".join("FAIL: " + f for f in fails) or "ok: a row dragged, a picture shown, a cell typed, by the real mouse and keys")
sys.exit(1 if fails else 0)
