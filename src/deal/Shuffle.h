#pragma once
// A seeded shuffle that gives the same order on every build and platform, so
// that a seed written down deals the same hands in the window and in
// zavik-deck. Both the generator and the way a number below n is drawn from it
// are fixed here: std::shuffle and the standard distributions are not the same
// from one library to the next.
//
// The generator is std::mt19937_64 seeded with the 64-bit seed. A number below
// n takes 64-bit outputs until one falls below the largest multiple of n, and
// is that output modulo n. The pile's cards are numbered from 0 in row order
// (all copies of the first row, then of the second, ...), and the i-th card
// off the pile swaps place i with place i + (a number below the cards left):
// Fisher and Yates from the top, one card at a time.

#include <QString>

#include <cstdint>
#include <random>
#include <unordered_map>

namespace deal {

struct Seed {
    quint64 value = 0;
    QString note; // why the text was not taken as written, or ""
};

// A text of digits is that number (below 2^64). Any other text (a word, a
// sign, a number too large) is taken by its FNV-1a 64 hash over its UTF-8
// bytes, with a note, so that any word can name a deal. Blanks around it do not count.
Seed readSeed(const QString& text);
// A seed no one chose, for a deal without one.
quint64 freshSeed();

// A number from 0 to n - 1; n at least 1.
quint64 below(std::mt19937_64& generator, quint64 n);

class Shuffle {
public:
    Shuffle(qint64 cards, quint64 seed);
    // The number of the next card off the pile, -1 when it is empty.
    qint64 next();
    qint64 left() const { return m_cards - m_taken; }

private:
    qint64 at(qint64 place) const;
    std::mt19937_64 m_generator;
    qint64 m_cards;
    qint64 m_taken = 0;
    // Only the places a swap has touched: a pile can hold six million cards,
    // a deal takes a few dozen.
    std::unordered_map<qint64, qint64> m_moved;
};

} // namespace deal
