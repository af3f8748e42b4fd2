// The pile, the counts read out of texts, and the seeded deal: the same seed
// deals the same hands, every card once, and bad texts give a note.

#include "deal/Deal.h"

#include <gtest/gtest.h>

#include <set>

namespace {

sheet::DeckContent deckOf(std::vector<sheet::DeckRow> rows) {
    sheet::DeckContent deck;
    deck.back = "back.bmp";
    deck.rows = std::move(rows);
    return deck;
}

TEST(Deal, PileTakesCopiesAndLeavesOutRowsWithoutCards) {
    const deal::Pile pile = deal::pileOf(deckOf({{"(x4)knight.bmp", ""},
                                                 {"", ""},
                                                 {"(x0)a.bmp", ""},
                                                 {"(x-3)b.bmp", ""},
                                                 {"(x99999)c.bmp", ""},
                                                 {"(x2.5)d.bmp", ""},
                                                 {"(xabc)e.bmp", ""}}));
    ASSERT_EQ(pile.rows.size(), 3u);
    EXPECT_EQ(pile.rows[1].copies, 32767);
    EXPECT_EQ(pile.rows[2].copies, 2) << "halves go to the even neighbour";
    EXPECT_EQ(pile.total, 4 + 32767 + 2);
    EXPECT_EQ(pile.notes.size(), 5) << pile.notes.join('\n').toStdString();

    const deal::Pile empty = deal::pileOf(deckOf({}));
    EXPECT_EQ(empty.total, 0);
    EXPECT_EQ(empty.notes, QStringList("The deck has no cards: the pile is empty."));
}

TEST(Deal, CountsReadOutOfTexts) {
    struct Case {
        QString text;
        int hands, size;
        bool noted;
    };
    const Case cases[] = {{"", 1, 0, false},       {"3", 3, 3, false}, {"2.5", 2, 2, false},
                          {"letters", 1, 0, true}, {"-5", 1, 0, true}, {"10000", 6, 10000, true},
                          {"0", 1, 0, true}};
    for (const Case& c : cases) {
        QStringList hands, size;
        EXPECT_EQ(deal::readHands(c.text, hands), c.hands) << c.text.toStdString();
        EXPECT_EQ(deal::readHandSize(c.text, size), c.size) << c.text.toStdString();
        EXPECT_EQ(!(hands + size).isEmpty(), c.noted) << c.text.toStdString();
    }
}

TEST(Deal, SeedsAreNumbersOrWordsByTheirHash) {
    EXPECT_EQ(deal::readSeed(" 42 ").value, 42u);
    EXPECT_TRUE(deal::readSeed("42").note.isEmpty());
    EXPECT_EQ(deal::readSeed("18446744073709551615").value, 18446744073709551615u);
    // FNV-1a 64 of "a", as its authors publish it.
    EXPECT_EQ(deal::readSeed("a").value, 0xaf63dc4c8601ec8cu);
    for (const char* word : {"tuesday", "-1", "18446744073709551616", "٣"}) {
        const deal::Seed seed = deal::readSeed(word);
        EXPECT_FALSE(seed.note.isEmpty()) << word;
        EXPECT_EQ(seed.value, deal::readSeed(word).value) << word;
    }
    // The generator is the standard's: its 10,000th output is fixed.
    std::mt19937_64 g;
    g.discard(9999);
    EXPECT_EQ(g(), 9981545732273789042u);
}

TEST(Deal, ASeedDealsEveryCardOnceAndTheSameAgain) {
    const deal::Pile pile = deal::pileOf(deckOf({{"(x1000)a.bmp", ""}, {"(x1000)b.bmp", ""}}));
    const deal::Deal one(pile, 6, 10, 7);
    const deal::Deal again(pile, 6, 10, 7);
    const deal::Deal other(pile, 6, 10, 8);
    EXPECT_EQ(one.hands(), again.hands());
    EXPECT_NE(one.hands(), other.hands());
    EXPECT_EQ(one.left(), 2000 - 60);

    // A whole pile shuffled: each card comes once, and not in row order.
    deal::Shuffle shuffle(500, 99);
    std::set<qint64> seen;
    bool moved = false;
    for (qint64 i = 0; i < 500; ++i) {
        const qint64 card = shuffle.next();
        moved = moved || card != i;
        seen.insert(card);
    }
    EXPECT_EQ(seen.size(), 500u);
    EXPECT_TRUE(moved);
    EXPECT_EQ(shuffle.next(), -1);
}

TEST(Deal, AShortPileGoesRoundTheTableAndDrawStopsWhenEmpty) {
    const deal::Pile pile = deal::pileOf(deckOf({{"(x7)a.bmp", ""}}));
    deal::Deal dealt(pile, 3, 10000, 1);
    std::vector<std::size_t> sizes;
    for (const auto& hand : dealt.hands())
        sizes.push_back(hand.size());
    EXPECT_EQ(sizes, (std::vector<std::size_t>{3, 2, 2}));
    EXPECT_EQ(dealt.notes().size(), 1);
    EXPECT_FALSE(dealt.draw(0));
    EXPECT_FALSE(dealt.draw(7));
    EXPECT_TRUE(dealt.discard(0, 2));
    EXPECT_FALSE(dealt.discard(0, 2));
    EXPECT_EQ(dealt.discards().size(), 1u);

    const deal::Deal none(deal::pileOf(deckOf({})), 2, 5, 1);
    EXPECT_EQ(none.hands().size(), 2u);
    EXPECT_TRUE(none.hands()[0].empty());
}

} // namespace
