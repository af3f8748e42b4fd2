#pragma once
// Undo and redo of the deck on page 4. At the end of each user action the page
// is compared with what was seen last, and a difference becomes a step of that
// deck's history. Each deck of a game keeps its history for the rest of the
// run, so edits of a deck that a load put another deck over come back with
// one Undo when that deck comes up again. Undo and redo change the page only:
// the file learns of them by the deck's own saves.

#include <QString>
#include <cstddef>

namespace history {

// Listens to the deck's loads and saves and to the ends of user actions. Once.
void install();

// The name of the step that the current action makes, in place of one made up
// from the difference ("Import common deck 1"). Dropped at the action's end.
void nameNextStep(const QString& name);

// Whether Undo or Redo would change the deck on the page, and the name of the
// step each would take back or bring again ("Add 25 cards"); "" for none.
bool canUndo();
bool canRedo();
QString undoName();
QString redoName();
// False, changing nothing, when there is no step, when page 4 is not up or
// while a form waits for an answer.
bool undo();
bool redo();

// "common deck 1", "deck 2 of player 1": a deck's section as the user names it.
QString deckName(const QString& section);

// Steps kept for each deck; older ones are forgotten.
inline constexpr int StepsKept = 1000;
// For measuring: the steps of the deck on the page, and the bytes that all
// decks' steps hold.
int undoDepth();
int redoDepth();
std::size_t bytesHeld();

} // namespace history
