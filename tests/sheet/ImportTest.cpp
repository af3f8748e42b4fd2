#include "sheet/Import.h"

#include "store/ProfileStore.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace sheet;

namespace {

const QStringList kColumns{"Value", "Colour", "Rank"};

DeckContent sampleDeck() {
    DeckContent deck;
    deck.back = "back.bmp";
    deck.deal = "5";
    deck.rows = {{"(x4)knight.bmp", "Value=3|Colour=red"},
                 {"queen.bmp", ""},
                 {"(x2)king.bmp", "Value=9"},
                 {"king.bmp", "o1=1|o2=2|o3=3|o4=4"}};
    return deck;
}

ImportPlan plan(const QByteArray& csv, bool removeMissing = false) {
    return planImport(sampleDeck(), kColumns, readCsv(csv),
                      {"ace.gif", "King.bmp", "king.bmp", "knight.bmp", "queen.bmp"},
                      removeMissing);
}

const Refusal* refusalAt(const ImportPlan& p, int line) {
    for (const Refusal& r : p.refused)
        if (r.line == line)
            return &r;
    return nullptr;
}

} // namespace

TEST(Import, AFileWithoutImagesOrWithTwinColumnsIsRefusedWhole) {
    EXPECT_FALSE(plan("copies,Value\n1,2\n").error.isEmpty());
    EXPECT_TRUE(plan("image,value,VALUE\n").error.contains("twice"));
    EXPECT_FALSE(plan("").error.isEmpty());
    const ImportPlan ok = plan("IMAGE,Copies,colour,note,,\nqueen.bmp,,,x,,\n");
    EXPECT_TRUE(ok.error.isEmpty()) << ok.error;
    ASSERT_EQ(ok.refused.size(), 1u); // "note" once, not per row; the empty columns not at all
    EXPECT_EQ(ok.refused[0].column, QStringLiteral("note"));
    EXPECT_EQ(ok.refused[0].line, 1);
}

TEST(Import, RowsMatchAddAndAreRefusedByImage) {
    const ImportPlan p = plan("image,copies,Rank,Colour\n"
                              "king.bmp,,,\n"               // 2: first king row, unchanged
                              "king.bmp,3,,\n"              // 3: second king row: copies 1 -> 3
                              "king.bmp,,,\n"               // 4: a third king row: duplicate
                              "ace.gif,2,A,'=x\n"           // 5: add
                              "ace.gif,,,\n"                // 6: duplicate of an add
                              "jack.bmp,,,\n"               // 7: not in the folder
                              "King.bmp,2.5,,\n"            // 8: copies of an add refused
                              "..\\x.bmp,,,\n"              // 9: a folder
                              ",2,,\n"                      // 10: no image
                              "knight.bmp, 4 ,,\" red \"\n" // 11: unchanged after trimming
                              "queen.bmp,0,B,a|b\n",        // 12: bad copies, bad colour, rank set
                              true);
    ASSERT_TRUE(p.error.isEmpty()) << p.error;
    std::vector<std::pair<RowPlan::Kind, int>> kinds;
    for (const RowPlan& r : p.rows)
        kinds.emplace_back(r.kind, r.line);
    const std::vector<std::pair<RowPlan::Kind, int>> expected{{RowPlan::Unchanged, 2},
                                                              {RowPlan::Change, 3},
                                                              {RowPlan::Add, 5},
                                                              {RowPlan::Unchanged, 11},
                                                              {RowPlan::Change, 12}};
    EXPECT_EQ(kinds, expected);
    EXPECT_EQ(p.rows[1].entry, QStringLiteral("(x3)king.bmp"));
    EXPECT_EQ(p.rows[1].props, QStringLiteral("o1=1|o2=2|o3=3|o4=4"));
    EXPECT_EQ(p.rows[2].entry, QStringLiteral("(x2)ace.gif"));
    EXPECT_EQ(p.rows[2].props, QStringLiteral("Rank=A")); // "=x" holds "=", its cell refused
    ASSERT_NE(refusalAt(p, 5), nullptr);
    EXPECT_EQ(refusalAt(p, 5)->column, QStringLiteral("Colour"));
    EXPECT_EQ(p.rows[4].entry, QStringLiteral("queen.bmp"));
    EXPECT_EQ(p.rows[4].props, QStringLiteral("Rank=B"));
    for (int line : {4, 6, 7, 8, 9, 10})
        EXPECT_NE(refusalAt(p, line), nullptr) << line;
    EXPECT_TRUE(refusalAt(p, 4)->reason.startsWith("Duplicate row"));
    EXPECT_TRUE(refusalAt(p, 7)->reason.contains("not in the game's image folder"));
    EXPECT_TRUE(refusalAt(p, 8)->reason.contains("whole number"));
    EXPECT_TRUE(refusalAt(p, 9)->reason.contains("folder"));
    EXPECT_EQ(p.removed(), 0); // every deck row has its CSV row
    int line12 = 0;
    for (const Refusal& r : p.refused)
        line12 += r.line == 12;
    EXPECT_EQ(line12, 2); // copies and Colour, each on its own
}

TEST(Import, PropertyEditsAreCheckedAndApplied) {
    const ImportPlan p = plan("image,Value,Colour,Rank\n"
                              "knight.bmp,,blue,A\n"  // Value removed, Colour changed, Rank set
                              "queen.bmp,x\u00e9,,\n" // a letter Windows-1252 holds
                              "king.bmp,9,,\n"
                              "king.bmp,1,c,d\n", // seven pairs: refused
                              true);
    ASSERT_TRUE(p.error.isEmpty());
    EXPECT_EQ(p.rows[0].props, QStringLiteral("Colour=blue|Rank=A"));
    ASSERT_EQ(p.rows[0].changes.size(), 3u);
    EXPECT_EQ(p.rows[0].changes[0].column, QStringLiteral("Value"));
    EXPECT_EQ(p.rows[0].changes[0].after, QString());
    EXPECT_EQ(p.rows[2].kind, RowPlan::Unchanged);
    EXPECT_EQ(p.rows[3].kind, RowPlan::Unchanged);
    ASSERT_NE(refusalAt(p, 5), nullptr);
    EXPECT_TRUE(refusalAt(p, 5)->reason.startsWith("A card holds at most six properties;"));

    const DeckContent after = applyImport(sampleDeck(), p);
    ASSERT_EQ(after.rows.size(), 4u);
    EXPECT_EQ(after.rows[0].props, QStringLiteral("Colour=blue|Rank=A"));
    EXPECT_EQ(after.rows[1].props, QString::fromUtf8("Value=x\xC3\xA9"));
    EXPECT_EQ(after.back, QStringLiteral("back.bmp"));

    const ImportPlan removing = plan("image\nking.bmp\nace.gif\n", true);
    EXPECT_EQ(removing.removed(), 3);
    const DeckContent pruned = applyImport(sampleDeck(), removing);
    ASSERT_EQ(pruned.rows.size(), 2u);
    EXPECT_EQ(pruned.rows[0].entry, QStringLiteral("(x2)king.bmp"));
    EXPECT_EQ(pruned.rows[1].entry, QStringLiteral("ace.gif"));
    EXPECT_TRUE(previewText(removing).endsWith("1 to add, 0 to change, 1 unchanged, 3 to remove, "
                                               "0 refused\n"));
}

TEST(Import, ExportImportAndSaveGiveTheSameBytes) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString game = dir.filePath("g.game");
    const QByteArray original =
        "[GAME]\r\ndirectory=cards\r\n[COMMON 1]\r\ndecksize=5\r\nimg_back=back.bmp\r\n"
        "img_discard=\r\ndeal=lots\r\nsplit=false\r\ndraw_facedown=false\r\n"
        "card1=(x4)knight.bmp,,Value=-3|Colour=red\r\ncard2=(x2.5)queen.bmp,,Colour='=x\r\n"
        "card3=king.bmp,,Value=9|Value=8|Other=x\r\ncard4=(x0)ace.gif\r\n"
        "card5=knight.bmp,,Rank=a;b\r\n[PROP LISTS]\r\ntotal=2\r\nlist1=F,Value,Colour\r\n"
        "list2=G,Colour,Rank\r\n";
    {
        QFile f(game);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(original);
    }
    store::DropProfileCache();
    const QStringList columns = propertyColumns(game);
    EXPECT_EQ(columns, QStringList({"Value", "Colour", "Rank"}));
    const DeckContent deck = readDeck(game, "common 1");
    ASSERT_EQ(deck.rows.size(), 5u);
    const ImportPlan p = planImport(deck, columns, readCsv(exportCsv(deck, columns)), {}, true);
    ASSERT_TRUE(p.error.isEmpty()) << p.error;
    EXPECT_TRUE(p.refused.empty()) << previewText(p);
    EXPECT_EQ(p.unchanged(), 5) << previewText(p);
    ASSERT_TRUE(writeDeck(game, "COMMON 1", applyImport(deck, p)));
    QFile f(game);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), original);
}

TEST(Import, AReadOnlyGameIsNotWritten) {
    QTemporaryDir dir;
    const QString game = dir.filePath("g.game");
    {
        QFile f(game);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("[COMMON 1]\r\ndecksize=0\r\n");
        f.setPermissions(QFileDevice::ReadOwner);
    }
    store::DropProfileCache();
    EXPECT_FALSE(writeDeck(game, "COMMON 1", sampleDeck()));
    EXPECT_TRUE(readDeck(game, "COMMON 1").rows.empty());
}
