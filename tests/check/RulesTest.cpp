// Each rule family on a clean game with the faults a test puts in, and the exact findings.

#include "CheckTestSupport.h"

namespace {

// A game that passes every rule; tests name its lines by number, as commented, to put faults in.
QStringList cleanGame() {
    return QStringLiteral(
               "[GAME]\nname=g\nplayers=2\ndirectory=img\ncommon_decks=1\ndesktop=table.bmp\n" // 1
               "[Player 1]\nname=North\ndecks=1\n[Player 2]\nname=South\ndecks=0\n"            // 7
               "[COMMON 1]\ndecksize=2\nimg_back=back.bmp\nimg_discard=pile.bmp\n"             // 13
               "deal=2\ncard1=(x3)a.bmp,,Value=3\ncard2=b.bmp\n"                               // 17
               "[DECK 1 PLAYER 1]\ndecksize=1\nimg_back=back.bmp\nimg_discard=pile.bmp\n"      // 20
               "deal=1\ncard1=c.jpg\n"                                                         // 24
               "[PROP LISTS]\ntotal=1\nlist1=Figures,Value,Colour\n"                           // 26
               "[REPORTS]\nnum_reports=1\nreport1=Total,SUM,HAND,TRUE,Value")                  // 29
        .split(QLatin1Char('\n'));
}

using Changes = std::initializer_list<std::pair<int, QString>>;

class Rules : public checktest::GameFolder {
protected:
    void SetUp() override {
        GameFolder::SetUp();
        images("img", {"table.bmp", "back.bmp", "pile.bmp", "a.bmp", "b.bmp", "c.jpg"});
    }
    // The clean game with line `number` (from 1) replaced.
    static QStringList with(QStringList lines, Changes changes) {
        for (const auto& [number, text] : changes)
            lines[number - 1] = text;
        return lines;
    }
    std::string check(Changes changes) {
        game(with(cleanGame(), changes));
        return findings();
    }
};

TEST_F(Rules, CountsOutOfRange) {
    EXPECT_EQ(check({}), "") << "the clean game";
    // Rows stop at six: the four players past the second have no name.
    EXPECT_EQ(check({{3, "players=9"}}), R"(
3: error: The number of players is "9", not a whole number from 1 to 6
3: warning: Player 3 has no name
3: warning: Player 4 has no name
3: warning: Player 5 has no name
3: warning: Player 6 has no name
17: error: Common deck 1 deals 2 cards to each of 6 players but holds 4)");

    // No deck is in use any more, so their images are left over too.
    EXPECT_EQ(check({{5, "common_decks=-1"}, {9, "decks=abc"}}), R"(
4: warning: The image "a.bmp" of the directory is used by no deck and not as the desktop
4: warning: The image "b.bmp" of the directory is used by no deck and not as the desktop
4: warning: The image "back.bmp" of the directory is used by no deck and not as the desktop
4: warning: The image "c.jpg" of the directory is used by no deck and not as the desktop
4: warning: The image "pile.bmp" of the directory is used by no deck and not as the desktop
5: error: The number of common decks is "-1", not a whole number from 0 to 6
9: error: The number of decks of player 1 is "abc", not a whole number from 0 to 6
13: note: [COMMON 1] is above the number of common decks
20: note: [DECK 1 PLAYER 1] is above the number of players or of their decks)");

    // Val stops at the "e": one report is in use.
    EXPECT_EQ(check({{27, "total=5"}, {30, "num_reports=1e9"}}), R"(
26: warning: Property list 2 is empty
26: warning: Property list 3 is empty
26: warning: Property list 4 is empty
27: error: The number of property lists is "5", not a whole number from 0 to 4
30: error: The number of reports is "1e9", not a whole number from 0 to 8)");

    // With no players a common deck still deals one hand.
    EXPECT_EQ(check({{3, "players=0"}, {17, "deal=5"}}), R"(
3: error: The number of players is "0", not a whole number from 1 to 6
4: warning: The image "c.jpg" of the directory is used by no deck and not as the desktop
7: note: [Player 1] is above the number of players
10: note: [Player 2] is above the number of players
17: error: Common deck 1 deals 5 cards to each of 1 players but holds 4
20: note: [DECK 1 PLAYER 1] is above the number of players or of their decks)");
}

TEST_F(Rules, NamesImagesTheImageDirectoryDeckSizesAndCardLines) {
    EXPECT_EQ(check({{11, "name="}, {15, "img_back="}, {23, "img_discard="}}), R"(
11: warning: Player 2 has no name
15: warning: Common deck 1 has no back image
23: warning: Deck 1 of player 1 has no discard image)");
    EXPECT_EQ(check({{5, "common_decks=2"}}),
              "\n5: warning: Common deck 2 is in use but has never been saved: it has no cards");
    EXPECT_EQ(check({{6, "desktop=Table.BMP"}, {19, "card2=missing.bmp"}}), R"(
4: warning: The image "b.bmp" of the directory is used by no deck and not as the desktop
6: warning: The desktop image names "Table.BMP", but the file is "table.bmp": it is found on Windows, not where letter case counts
19: error: Card 2 of common deck 1 names "missing.bmp", which is not in the directory "img")");

    EXPECT_EQ(check({{4, "directory="}}),
              "\n4: error: No image directory is set, so no image of the game can be found");
    EXPECT_EQ(check({{4, "directory=nothere"}}),
              "\n4: error: The image directory \"nothere\" does not exist");
    write("plain", "not a folder");
    EXPECT_EQ(check({{4, "directory=plain"}}),
              "\n4: error: The image directory \"plain\" is a file, not a directory");
    // A link that points at itself is no image, and listing it does not hang.
    ASSERT_TRUE(QFile::link(path("img/loop.bmp"), path("img/loop.bmp")) ||
                QFile::link("loop.bmp", path("img/loop.bmp")));
    ASSERT_TRUE(QFile::link(path("img"), path("img/again")));
    EXPECT_EQ(check({}), "");

    EXPECT_EQ(check({{14, "decksize=4"}, {19, "card2="}}), R"(
4: warning: The image "b.bmp" of the directory is used by no deck and not as the desktop
14: error: The size of common deck 1 is 4 but only 2 card lines are present (the first missing is card3): the wizard shows empty cards
17: error: Common deck 1 deals 2 cards to each of 2 players but holds 3
19: error: Card 2 of common deck 1 has no image)");

    // card3 stands where [DECK 1 PLAYER 1] stood, so that deck is no more.
    EXPECT_EQ(check({{14, "decksize=3"},
                     {18, "card1=(x0)a.bmp"},
                     {19, "card2=(x40000)b.bmp"},
                     {20, "card3=b,x.bmp"}}),
              R"(
4: warning: The image "c.jpg" of the directory is used by no deck and not as the desktop
9: warning: Deck 1 of player 1 is in use but has never been saved: it has no cards
18: error: Card 1 of common deck 1: the copies in "(x0)a.bmp" read as 0; a card has 1 to 32767 copies
19: error: Card 2 of common deck 1: the copies in "(x40000)b.bmp" read as more than 32767; a card has 1 to 32767 copies
20: error: Card 3 of common deck 1 holds a "," in its image name or in a property value; the line is cut there on reading
20: error: Card 3 of common deck 1 names "b", which is not in the directory "img")");
}

TEST_F(Rules, ReadAsTheWizardReads) {
    // A blank after ")" and a header that stands twice: read, and lines named, as the wizard does.
    QStringList lines =
        with(cleanGame(), {{18, "card1=(x3) a.bmp"}, {5, "common_decks=2"}, {15, "img_back="}});
    lines += {"[COMMON 1]", "decksize=1", "card1=ghost.bmp", "[COMMON 2]", "decksize=201"};
    // Six decks of a player, the most there may be, each saved with one card.
    lines[8] = "decks=6";
    for (int d = 2; d <= 6; ++d)
        lines += QStringLiteral("[DECK %1 PLAYER 1]|decksize=1|img_back=back.bmp|"
                                "img_discard=pile.bmp|deal=1|card1=c.jpg")
                     .arg(d)
                     .split(QLatin1Char('|'));
    game(lines);
    images("img", {"d.png", "e.PNG", "notes.txt"});
    EXPECT_EQ(findings(), R"(
4: note: The directory "img" holds 2 pictures that the wizard lists nowhere, as it lists only *.bmp, *.jpg and *.gif files: d.png, e.PNG
15: warning: Common deck 1 has no back image
35: warning: Common deck 2 has no back image
35: warning: Common deck 2 has no discard image
35: error: The cards to deal of common deck 2 are empty, not a whole number
36: error: The size of common deck 2 is 201, more than the 200 cards a deck can hold
36: error: The size of common deck 2 is 201 but only 0 card lines are present (the first missing is card1): the wizard shows empty cards)");
}

TEST_F(Rules, LinesThatAreNoKeysAndLeftoversAboveTheCounts) {
    // A description of three lines, saved twice: the file keeps every later line.
    QStringList lines = cleanGame();
    lines.insert(2, "description=line one");
    lines.insert(3, "line three");
    lines.insert(4, "line two");
    lines.insert(5, "line three");
    lines.insert(16, "stray");
    game(lines);
    EXPECT_EQ(findings(), R"(
4: warning: 3 lines, from "line three" on, in [GAME] are no key=value lines: left over from a description of several lines, of which the engine reads only the first, and every save leaves the later ones once more. Write the description on one line and delete the lines below it
17: warning: The line "stray" in [Player 2] is no key=value line; no reader takes it)");

    lines = cleanGame();
    lines.insert(19, "card3=old.bmp");
    lines.insert(19, "card4=older.bmp");
    lines +=
        {"[Player 3]", "name=Gone", "[COMMON 2]", "decksize=0", "[REPORTS]", "report2=not,read"};
    game(lines);
    // The second [REPORTS] is never read: the first of a name wins.
    EXPECT_EQ(findings(), R"(
20: note: 2 card lines above the count are not read
34: note: [Player 3] is above the number of players
36: note: [COMMON 2] is above the number of common decks)");

    lines.insert(30, "list2=Old,Value");
    lines.insert(34, "report2=Old,SUM,ALL,TRUE,Value");
    game(lines);
    EXPECT_EQ(findings(), R"(
20: note: 2 card lines above the count are not read
31: note: 1 property list line above the count is not read
35: note: 1 report line above the count is not read
36: note: [Player 3] is above the number of players
38: note: [COMMON 2] is above the number of common decks)");
}

TEST_F(Rules, PropertiesDealsLongValuesReportsAndTheLastValueOfEveryLimit) {
    EXPECT_EQ(check({{18, "card1=(x3)a.bmp,,Value=3=4|Power=2|Colour"},
                     {27, "total=2"},
                     {28, "list1=Figures,Value,Value"}}),
              R"(
18: error: Card 1 of common deck 1: the value of "Value" holds "=" and is cut there on reading
18: warning: Card 1 of common deck 1 has a value for "Power", a property that stands in no property list
18: error: Card 1 of common deck 1: "Colour" is no name=value pair; a value holding "|" is split there
26: warning: Property list 2 is empty
28: warning: Property list 1 names the property "Value" twice)");

    EXPECT_EQ(check({{17, "deal=two"},
                     {19, "card2=b.bmp,,Value=" + QString(250, QLatin1Char('9'))},
                     {24, "deal=2"},
                     {31, "report1=Total,AVG,EVERY,TRUE,Power"}}),
              R"(
17: error: The cards to deal of common deck 1 are "two", not a whole number
19: error: The value of card2 in [COMMON 1] has 263 characters; readers take only the first 254
24: error: Deck 1 of player 1 deals 2 cards but holds 1
31: error: Report 1 has the type "AVG", which is neither "SUM" nor "COUNT"
31: error: Report 1 has the scope "EVERY", which is none of "ALL", "HAND" and "SELECTED"
31: error: Report 1 is on the property "Power", which stands in no property list)");
    EXPECT_EQ(check({{30, "num_reports=2"}}), "\n29: error: Report 2 is missing");

    const QString sixNames = "list1=Figures,Value,Colour,P3,P4,P5,P6";
    const QString sixPairs = "card1=(x3)a.bmp,,Value=1|Colour=2|P3=3|P4=4|P5=5|P6=6";
    const QString longest = "card2=b.bmp,,Value=" + QString(254 - 13, QLatin1Char('v'));
    EXPECT_EQ(check({{3, "players=1"},
                     {18, sixPairs},
                     {19, longest},
                     {28, sixNames},
                     {30, "num_reports=0"}}),
              R"(
10: note: [Player 2] is above the number of players
31: note: 1 report line above the count is not read)");

    const std::string found = check({{3, "players=6"},
                                     {5, "common_decks=0"},
                                     {18, sixPairs + "|P7=7"},
                                     {19, longest + "v"},
                                     {28, sixNames + ",P7"},
                                     {27, "total=4"},
                                     {30, "num_reports=8"}});
    const auto has = [&found](const std::string& text) {
        return (found + "\n").find(text + "\n") != std::string::npos;
    };
    for (const char* range : {"1 to 6", "0 to 6", "0 to 4", "0 to 8"})
        EXPECT_FALSE(has(std::string("not a whole number from ") + range)) << range;
    EXPECT_FALSE(has("property values; only the first six are read"))
        << "common deck 1 is no longer in use";
    EXPECT_TRUE(has("Property list 1 has 7 property names; only the first six are read"));
    EXPECT_TRUE(has(
        "The value of card2 in [COMMON 1] has 255 characters; readers take only the first 254"));
    EXPECT_TRUE(has("Report 8 is missing"));

    EXPECT_NE((check({{5, "common_decks="}, {18, sixPairs + "|P7=7"}}) + "\n")
                  .find("\n5: error: The number of common decks is empty, not a whole number "
                        "from 0 to 6\n"),
              std::string::npos);
    EXPECT_EQ(check({{18, sixPairs + "|P7=7"}, {28, sixNames}}), R"(
18: warning: Card 1 of common deck 1 has 7 property values; only the first six are read)");
}

} // namespace
