#pragma once
// The draw pile of a deck: each row's card as many times as its copies say,
// and the numbers of hands and of cards a hand that a deal is asked for, read
// out of the texts the page and the file hold. Whatever those texts say, the
// result is a pile and counts that can be dealt, and a note says where the
// text was not taken as written.

#include "sheet/DeckContent.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace deal {

inline constexpr int MaxHands = 6;

struct PileRow {
    int deckRow;   // 0-based row of the deck
    QString name;  // the image's file name
    QString props; // the row's property text
    qint64 copies; // at least 1: rows without a card are not in the pile
};

struct Pile {
    std::vector<PileRow> rows;
    qint64 total = 0;
    QStringList notes;
};

// Copies as a card entry reads them; a count below 1 is no card, and an entry
// without a name stands for no image: both stay out, each with a note.
Pile pileOf(const sheet::DeckContent& deck);

// The players of a game (`players`, or the box that holds it), 1 to 6; a
// text with no number, or 0, deals one hand.
int readHands(const QString& text, QStringList& notes);
// The cards a hand is dealt (`deal`, or the box that holds it): none for a
// text with no number, 0 or below.
int readHandSize(const QString& text, QStringList& notes);

// The property names to count the values of: `columns` first, then any other
// name the cards' pairs hold, each once.
QStringList valueNames(const Pile& pile, const QStringList& columns);

} // namespace deal
