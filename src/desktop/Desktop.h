#pragma once
// What a desktop window has beside the form's pages: a menu bar whose entries
// press the pages' own buttons, a status bar, zoom, a new game, the About box
// and a mark in the title while the pages hold edits that Save has not written.

class MainForm;

namespace desktop {

// The forms of this layer, registered with the run time; once, at start.
void registerDesktopForms();
// Gives the main form its bars, menus and shortcuts. Once for each main form.
void dress(MainForm* form);

// The entries' work, reachable without the menu.
// As a click on the button: the field being left is validated first, and a
// button the user cannot reach does nothing.
void press(MainForm* form, const char* button);
// Every page as at start, the list of games read anew, nothing written. Refused
// (false) while a form waits for an answer: the code behind it would go on
// with a game that is gone.
bool newGame();
// One zoom step in or out (+1, -1), or back to the design size (0).
void zoomStep(MainForm* form, int direction);
// Brings the title's mark up to date with what a Save would write.
void refreshUnsavedMark(MainForm* form);
void showAbout();
// File > Pack game: the saved game of the page as one ZIP file, where the user says.
void packGame();
// File > Unpack game: a packed game into the application folder, after a look at
// what it will create; then the game is opened and checked.
void unpackGame();

} // namespace desktop
