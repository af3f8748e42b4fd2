#pragma once
// One deck section of a game file as a table: what the deck page loads and
// saves, read and written through the store the same way, so that a sheet and
// the page never disagree about a deck.

#include <QString>
#include <QStringList>

#include <vector>

namespace sheet {

struct DeckRow {
    QString entry; // "(x3)knight.bmp" or "knight.bmp"
    QString props; // "Value=3|Colour=red", or ""
};

struct DeckContent {
    QString back, discard, deal;
    std::vector<DeckRow> rows;
};

// The deck as the page loads it: decksize by CInt(Val), card i = fields 1 and
// 3 of card<i>.
DeckContent readDeck(const QString& gameFile, const QString& section);

// Writes the deck as the page's save does, in one store::WriteBatch and in
// the same key order: decksize, img_back, img_discard, deal, split=false,
// draw_facedown=false, card1..cardN. False when the file could not be written.
bool writeDeck(const QString& gameFile, const QString& section, const DeckContent& deck);

// The property names of the game's saved lists, each once, first-seen order.
QStringList propertyColumns(const QString& gameFile);

// The *.bmp, *.jpg and *.gif files (any letter case) in `dir`, sorted without
// regard to case; empty when dir is missing.
QStringList folderImages(const QString& dir);

// The game's image directory: the game file's folder + "/" + [GAME] directory.
QString imageDirOf(const QString& gameFile);

} // namespace sheet
