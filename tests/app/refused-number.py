#!/usr/bin/python3
"""On a real display with a window manager, by real mouse and keys: leaving the name box by a click loads the
game, a refused number of players holds the page against a click on Forward after its message was closed by
Enter or by a click on OK, and the save writes the corrected number."""
import os, sys, time
from harness import *

appdir = os.environ["APPDIR"]
with open(os.path.join(appdir, "Duel.game"), "wb") as f:
    f.write(b"[GAME]\r\ndescription=Two sides\r\nplayers=2\r\n[Player 1]\r\nname=Ann\r\n[Player 2]\r\nname=Bo\r\n")
a = app()
main = [w for w in a if w is not None and w.name.startswith("Zavik Wizard - ver")][0]
fails = []
def expect(what, ok):
    if not ok: fails.append(what)
def messages():
    return [l for _, labels in dialogs() for l in labels]

xdo("type", "--delay", "40", "Duel"); time.sleep(0.3)
click(main, "push button", "Forward >>"); time.sleep(0.8)
expect("the name box left by a click loads the game", page(main) == ["Players Info"] and
       any(n.name == "Number of Players" and n.queryText().getText(0, -1) == "2"
           for n in find(main, "text", "Number of Players")))
click(main, "text", "Number of Players"); time.sleep(0.3)
xdo("key", "End", "BackSpace"); xdo("type", "7"); time.sleep(0.8)
expect("typing 7 says so", "Please select a number from 1 to 6" in messages())
xdo("key", "Return"); time.sleep(0.8)
click(main, "push button", "Forward >>"); time.sleep(0.8)
expect("Forward after Enter on the message is refused", "Please select a number from 1 to 6" in messages())
box = [w for w, labels in dialogs()]
if box: click(box[0], "push button", "OK"); time.sleep(0.8)
click(main, "push button", "Forward >>"); time.sleep(0.8)
expect("Forward after a click on OK is refused", "Please select a number from 1 to 6" in messages())
xdo("key", "Return"); time.sleep(0.8)
expect("the page stays", page(main) == ["Players Info"])
xdo("key", "BackSpace"); xdo("type", "3"); time.sleep(0.5)
click(main, "push button", "Forward >>"); time.sleep(0.8)
expect("a good number lets Forward through", page(main) == ["Decks Info"])
click(main, "push button", "Save"); time.sleep(1.0)
for _ in dialogs():
    xdo("key", "space"); time.sleep(0.5)
text = open(os.path.join(appdir, "Duel.game"), "rb").read()
expect("the save writes players=3", b"players=3\r\n" in text and b"players=7" not in text)
print("\n".join("FAIL: " + f for f in fails) or "ok: the refused number held against the mouse")
sys.exit(1 if fails else 0)
