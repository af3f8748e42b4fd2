// The deal window through real keys and clicks: opened by its shortcut, a
// seed typed and dealt, the same hands as zavik-deck deals for that seed, the
// odds sorted by a header click, a group chosen with the mouse, and the table
// copied.

#include "ProgramTest.h"

#include "deckview/DealForm.h"
#include "runtime/Table.h"

#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QProcess>
#include <QTableView>

namespace {

class DealWindow : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        image("cards/knight.bmp", 20, 30);
        image("cards/queen.bmp", 20, 30);
        image("cards/back.bmp", 20, 30);
        file("Duel.game",
             "[GAME]\r\nplayers=2\r\ndirectory=cards\r\ncommon_decks=1\r\n[COMMON 1]\r\n"
             "decksize=3\r\nimg_back=back.bmp\r\ndeal=4\r\n"
             "card1=(x5)knight.bmp,,Colour=red\r\ncard2=(x3)queen.bmp,,Colour=red\r\n"
             "card3=(x4)king.bmp,,Colour=black\r\n");
        show();
        form->NameTXT->setText("Duel");
        form->LoadGameData();
        form->ShowCommonDeck_Click(0);
        activate();
        QTest::keyClick(focused(form), Qt::Key_T, Qt::ControlModifier);
        window = rt::loaded<deckview::DealForm>();
        ASSERT_NE(window, nullptr);
        window->activateWindow();
        QApplication::setActiveWindow(window);
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    }
    static void clickAt(QWidget* w, QPoint at, Qt::KeyboardModifiers mods = {}) {
        QTest::mouseClick(w, Qt::LeftButton, mods, at);
    }
    deckview::DealForm* window = nullptr;
};

TEST_F(DealWindow, ATypedSeedDealsWhatTheCommandDealsForIt) {
    click(window->SeedBox);
    QTest::keyClick(focused(window), Qt::Key_A, Qt::ControlModifier);
    type(window->SeedBox, "20240611");
    click(window->DealBtn);
    EXPECT_EQ(window->SeedBox->Text(), "20240611");
    ASSERT_EQ(window->hands->Rows(), 2);
    ASSERT_EQ(window->hands->Cols(), 4);

    QProcess deck;
    deck.start(ZAVIK_DECK_EXE,
               {"deal", dir.filePath("Duel.game"), "COMMON 1", "--seed", "20240611"});
    ASSERT_TRUE(deck.waitForFinished(10000));
    const QStringList lines = QString::fromUtf8(deck.readAllStandardOutput()).split('\n');
    for (int h = 0; h < 2; ++h) {
        QStringList shown;
        for (int c = 0; c < window->hands->Cols(); ++c)
            shown << window->hands->Cell(h, c);
        EXPECT_TRUE(lines.contains(QStringLiteral("hand %1: ").arg(h + 1) + shown.join(", ")))
            << lines.join('\n').toStdString();
    }
    EXPECT_EQ(window->PileLabel->Caption(), "Pile: 4 of 12 cards");
    EXPECT_TRUE(window->Notes->Caption().contains("king.bmp is not in the game's folder") ==
                lines.join('\n').contains("king.bmp"));

    // Draw with the mouse: one more card for the chosen hand.
    click(window->DrawBtn);
    EXPECT_NE(window->hands->Cell(0, 4), "");
    EXPECT_EQ(window->PileLabel->Caption(), "Pile: 3 of 12 cards");
}

TEST_F(DealWindow, OddsSortByAHeaderClickAndRowsChosenMakeAGroup) {
    QTableView* view = window->odds->view();
    ASSERT_EQ(window->odds->Rows(), 5); // three cards, two colours
    EXPECT_EQ(window->odds->Cell(3, 0), "Colour = red");

    QHeaderView* header = view->horizontalHeader();
    clickAt(header->viewport(), QPoint(header->sectionViewportPosition(1) + 5, 5));
    QStringList copies;
    for (int r = 0; r < window->odds->Rows(); ++r)
        copies << window->odds->Cell(r, 1);
    EXPECT_EQ(copies, QStringList({"3", "4", "4", "5", "8"}));

    // Queen and knight (rows 0 and 3 now): one group of eight red cards.
    const auto cell = [view](int row) {
        return view->visualRect(view->model()->index(row, 0)).center();
    };
    clickAt(view->viewport(), cell(0));
    clickAt(view->viewport(), cell(3), Qt::ControlModifier);
    click(window->GroupBtn);
    ASSERT_EQ(window->odds->Rows(), 6);
    int group = -1;
    for (int r = 0; r < 6; ++r)
        if (window->odds->Cell(r, 0).contains(" + "))
            group = r;
    ASSERT_GE(group, 0);
    EXPECT_EQ(window->odds->Cell(group, 1), "8");
    // Red cards in a hand of four from twelve: 1 - C(4,4)/C(12,4) = 1 - 1/495.
    EXPECT_EQ(window->odds->Cell(group, 2), QString::number(1 - 1.0 / 495, 'f', 9));

    // A new hand size and k redo the group too.
    click(window->AtLeastBox);
    QTest::keyClick(focused(window), Qt::Key_Backspace);
    type(window->AtLeastBox, "4");
    EXPECT_EQ(window->odds->Header(2), "At least 4");
    for (int r = 0; r < 6; ++r) {
        if (window->odds->Cell(r, 1) == "8") {
            EXPECT_EQ(window->odds->Cell(r, 2), QString::number(70.0 / 495, 'f', 9));
        }
    }

    click(window->CopyBtn);
    const QString csv = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(csv.contains("Cards,In pile,At least 4,Exactly 4,Expected")) << csv.toStdString();
    EXPECT_EQ(csv.count('\n'), 7);
    EXPECT_TRUE(messages.isEmpty());
}

} // namespace
