// The odds against values found another way: every hand of a small pile
// counted one by one, closed forms of known cases, and a product formula on a
// pile of millions.

#include "deal/Odds.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

// Every hand of `hand` cards out of `pile`, the first `marked` of them counted.
struct Counted {
    double atLeast, exactly;
};
Counted enumerate(int pile, int marked, int hand, int k) {
    long total = 0, atLeast = 0, exactly = 0;
    for (unsigned mask = 0; mask < (1u << pile); ++mask) {
        if (__builtin_popcount(mask) != hand)
            continue;
        const int held = __builtin_popcount(mask & ((1u << marked) - 1));
        ++total;
        atLeast += held >= k;
        exactly += held == k;
    }
    return {double(atLeast) / double(total), double(exactly) / double(total)};
}

TEST(Odds, EveryHandOfASmallPileCountedOneByOne) {
    for (int pile : {1, 5, 12})
        for (int marked = 0; marked <= pile; marked += 2)
            for (int hand = 0; hand <= pile; hand += 3)
                for (int k = -1; k <= hand + 1; ++k) {
                    const Counted want = enumerate(pile, marked, hand, k);
                    const deal::Chance got = deal::hypergeometric(pile, marked, hand, k);
                    EXPECT_NEAR(double(got.atLeast), want.atLeast, 1e-12)
                        << pile << " " << marked << " " << hand << " " << k;
                    EXPECT_NEAR(double(got.exactly), want.exactly, 1e-12)
                        << pile << " " << marked << " " << hand << " " << k;
                    EXPECT_NEAR(double(got.expected), double(hand) * marked / pile, 1e-12);
                }
}

TEST(Odds, KnownValuesAndAPileOfMillions) {
    // An ace in five cards of 52: 1 - C(48,5)/C(52,5).
    EXPECT_NEAR(double(deal::hypergeometric(52, 4, 5, 1).atLeast), 1.0 - 1712304.0 / 2598960.0,
                1e-15);
    // Both red kings in a hand of 13: C(50,11)/C(52,13) = 13*12/(52*51).
    EXPECT_NEAR(double(deal::hypergeometric(52, 2, 13, 2).exactly), 156.0 / 2652.0, 1e-15);

    // 200 rows of 32,767 copies, one row counted, in hands of 10 and of 5,000:
    // none of it is P(X = 0) = prod (T - K - i) / (T - i).
    const long double T = 200.0L * 32767, K = 32767;
    for (int hand : {10, 5000}) {
        long double none = 1;
        for (int i = 0; i < hand; ++i)
            none *= (T - K - i) / (T - i);
        const deal::Chance c = deal::hypergeometric(200 * 32767, 32767, hand, 1);
        EXPECT_NEAR(double(c.atLeast), double(1 - none), 1e-12) << hand;
        EXPECT_NEAR(double(c.expected), hand / 200.0, 1e-12);
    }
}

TEST(Odds, CountsOutsideWhatCanBeGiveProbabilities) {
    struct Case {
        qint64 pile, marked, hand, k;
        double atLeast, exactly;
    };
    const Case cases[] = {
        {0, 0, 5, 1, 0, 0},   // an empty pile: no division by zero
        {0, 0, 0, 0, 1, 1},   // nothing at all holds none of it
        {10, 20, 3, 3, 1, 1}, // more marked than cards: all of them are
        {10, 4, 50, 4, 1, 1}, // a hand larger than the pile holds every card
        {10, 4, -5, 1, 0, 0}, // a hand below zero is no hand
        {10, 4, 3, 4, 0, 0},  // more than the hand can hold
    };
    for (const Case& c : cases) {
        const deal::Chance got = deal::hypergeometric(c.pile, c.marked, c.hand, c.k);
        EXPECT_DOUBLE_EQ(double(got.atLeast), c.atLeast) << c.pile << " " << c.hand;
        EXPECT_DOUBLE_EQ(double(got.exactly), c.exactly) << c.pile << " " << c.hand;
    }
}

TEST(Odds, TableRowsCountCopiesOfCardsValuesAndGroups) {
    sheet::DeckContent deck;
    deck.rows = {{"(x4)knight.bmp", "Value=3|Colour=red"},
                 {"queen.bmp", "Colour=red"},
                 {"(x2)knight.bmp", "Value=9|Extra=1"},
                 {"(x0)joker.bmp", "Colour=blue"}};
    const deal::Pile pile = deal::pileOf(deck);
    const deal::OddsTable table = deal::oddsTable(pile, {"Colour", "Value"}, 9, 1);
    EXPECT_EQ(table.hand, 7) << "a hand larger than the pile is the pile";
    QStringList what;
    std::vector<qint64> copies;
    for (const deal::OddsRow& row : table.rows) {
        what << row.what;
        copies.push_back(row.copies);
    }
    EXPECT_EQ(what, QStringList({"knight.bmp (row 1)", "queen.bmp", "knight.bmp (row 3)",
                                 "Colour = red", "Value = 3", "Value = 9", "Extra = 1"}));
    EXPECT_EQ(copies, (std::vector<qint64>{4, 1, 2, 5, 4, 2, 2}));
    const deal::OddsRow group = deal::groupRow(pile, {0, 2, 0}, table);
    EXPECT_EQ(group.copies, 6);
    EXPECT_EQ(group.what, "knight.bmp + knight.bmp");
}

} // namespace
