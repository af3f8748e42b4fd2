#pragma once
// The deck on page 4 as the windows beside the wizard see it: the rows of
// commonList with their slots in CardProps, read and changed in place, so that
// the page and every window show one deck.

#include "sheet/DeckContent.h"
#include "sheet/Import.h"

#include <QString>
#include <QStringList>
#include <vector>

class MainForm;

namespace deckview {

// Whether page 4 holds a deck that a window may edit.
bool deckOnPage();
// "Common Deck #1", or the player's deck as the page's caption names it; "" with no deck up.
QString deckTitle();
// The deck's section name in the game file ("COMMON 1", "DECK 2 PLAYER 1").
QString deckSection();
// The game's image directory, as page 4 lists it.
QString imageDir();
// The property names that make the sheet's columns, from the game's saved lists.
QStringList deckColumns();

int rowCount();
QString rowEntry(int row);
QString rowProps(int row);
void setRowEntry(int row, const QString& entry);
void setRowProps(int row, const QString& props);
// A new last row of one copy of `image`, with a slot of its own, as "->" adds one.
void addCard(const QString& image);
// Removes the rows, given in any order; slots are not given back.
void removeRows(std::vector<int> rows);
// The recount of the page's label after changes.
void recount();

// The page's deck as content, and an import's plan laid onto the page.
sheet::DeckContent pageContent();
void applyPlan(const sheet::ImportPlan& plan);

} // namespace deckview
