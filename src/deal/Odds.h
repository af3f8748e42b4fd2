#pragma once
// The exact chance that one hand holds what matters: for each card of the
// pile, each value of each property and any group of cards, how likely a hand
// of N cards dealt from the whole pile holds at least k of them, exactly k,
// and how many it holds on average. Hypergeometric, not simulated.

#include "deal/Pile.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace deal {

struct Chance {
    long double atLeast = 0; // P(X >= k)
    long double exactly = 0; // P(X = k)
    long double expected = 0;
};

// A hand of `hand` cards from `pile` cards of which `marked` are the ones
// counted. The counts are clamped to what can be (0 <= marked, hand <= pile),
// so every result is a probability; an empty pile or hand holds none.
Chance hypergeometric(qint64 pile, qint64 marked, qint64 hand, qint64 atLeast);

struct OddsRow {
    enum Kind { Card, Value, Group };
    Kind kind = Card;
    QString what;              // "knight.bmp", "Colour = red", "knight.bmp + queen.bmp"
    std::vector<int> pileRows; // indices into Pile::rows
    qint64 copies = 0;
    Chance chance;
};

struct OddsTable {
    qint64 pile = 0;
    qint64 hand = 0; // as dealt: at most the pile
    qint64 atLeast = 1;
    std::vector<OddsRow> rows;
    QStringList notes;
};

// A row for each card of the pile, then one for each value of each name of
// valueNames(pile, columns).
OddsTable oddsTable(const Pile& pile, const QStringList& columns, qint64 hand, qint64 atLeast);
// The cards of the given pile rows as one group, with its chance in `table`'s hand.
OddsRow groupRow(const Pile& pile, std::vector<int> pileRows, const OddsTable& table);

// How many a hand must hold: 1 for an empty text, 0 for one below 0 (noted).
qint64 readAtLeast(const QString& text, QStringList& notes);

// The columns as shown and copied, and a row's cells: probabilities to nine
// places, the expected number to six.
QStringList oddsHeader(const OddsTable& table);
QStringList oddsCells(const OddsRow& row);

// The table as zavik-deck prints it, and as JSON with the full precision.
QString oddsText(const OddsTable& table);
QByteArray oddsJson(const OddsTable& table, const QString& section);

} // namespace deal
