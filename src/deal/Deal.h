#pragma once
// Hands dealt off a shuffled pile, as at a table: one card at a time to each
// hand in turn, so that a pile that runs short leaves the hands at most one
// card apart. Further cards are drawn one at a time into a chosen hand, and
// cards of a hand can go to the discard pile.

#include "deal/Pile.h"
#include "deal/Shuffle.h"

#include <vector>

namespace deal {

class Deal {
public:
    // An empty table: no hands, nothing dealt.
    Deal();
    Deal(const Pile& pile, int hands, int handSize, quint64 seed);

    // One more card off the pile into `hand`; false when the pile is empty or
    // there is no such hand.
    bool draw(int hand);
    // The card at `position` of `hand` onto the discard pile.
    bool discard(int hand, int position);

    // Each card as the index of its row in the pile's rows.
    const std::vector<std::vector<int>>& hands() const { return m_hands; }
    const std::vector<int>& discards() const { return m_discards; }
    qint64 left() const { return m_shuffle.left(); }
    quint64 seed() const { return m_seed; }
    const QStringList& notes() const { return m_notes; }

private:
    int rowOf(qint64 card) const;
    Shuffle m_shuffle;
    quint64 m_seed = 0;
    std::vector<qint64> m_ends; // cards up to and including each pile row
    std::vector<std::vector<int>> m_hands;
    std::vector<int> m_discards;
    QStringList m_notes;
};

// The deal as zavik-deck prints it: the seed, each hand's cards by their image
// names, the cards left, and the notes.
QString dealText(const Pile& pile, const Deal& deal);

} // namespace deal
