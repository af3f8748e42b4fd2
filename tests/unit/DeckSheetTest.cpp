// The deck sheet, the previews and the drops through the real widgets: keys
// typed into cells, rows chosen with the mouse, a picture dropped from a file
// manager.

#include "ProgramTest.h"

#include "deckview/DeckSheetForm.h"
#include "deckview/DeckView.h"
#include "runtime/Table.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QLabel>
#include <QMimeData>
#include <QTableView>
#include <QUrl>

namespace {

class DeckSheet : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        image("cards/a.bmp", 20, 30);
        image("cards/b.bmp", 40, 10);
        image("cards/c.jpg", 8, 8);
        file("Duel.game", "[GAME]\r\ndirectory=cards\r\ncommon_decks=1\r\n[COMMON 1]\r\n"
                          "decksize=3\r\ncard1=(x2)a.bmp,,Rank=1|Value=3\r\ncard2=b.bmp\r\n"
                          "card3=c.jpg,,Colour=red\r\n[PROP LISTS]\r\ntotal=2\r\n"
                          "list1=Figures,Value,Colour\r\nlist2=Ranks,Rank,Value\r\n");
        show();
        form->NameTXT->setText("Duel");
        form->LoadGameData();
        form->ShowCommonDeck_Click(0);
        deckview::showSheet();
        sheet = rt::loaded<deckview::DeckSheetForm>();
        ASSERT_NE(sheet, nullptr);
        view = sheet->cards->view();
        sheet->activateWindow();
        QApplication::setActiveWindow(sheet);
        ASSERT_TRUE(QTest::qWaitForWindowActive(sheet));
    }
    QPoint cellCentre(int row, int col) const {
        return view->visualRect(view->model()->index(row, col)).center();
    }
    // Keys as the keyboard sends them: the first starts the cell's editor,
    // which takes the rest; between two keys the event loop goes idle, and
    // the end of each action repaints the sheet under the open editor.
    void typeKeys(const QString& text) {
        for (QChar ch : text) {
            QTest::keyClick(focused(view), ch.toLatin1());
            rt::actionEnded();
        }
    }
    void clickCell(int row, int col, Qt::KeyboardModifiers mods = {}) {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, mods, cellCentre(row, col));
    }

    deckview::DeckSheetForm* sheet = nullptr;
    QTableView* view = nullptr;
};

TEST_F(DeckSheet, TypingIntoCellsEditsTheDeckOnThePageAndEnterMovesDown) {
    EXPECT_EQ(sheet->cards->Cols(), 6); // picture, image, copies, Value, Colour, Rank
    EXPECT_EQ(sheet->cards->Header(5), "Rank");
    EXPECT_EQ(sheet->cards->Cell(0, 3), "3");

    clickCell(1, 4);
    typeKeys("blue");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Globals::cardProp(2), "Colour=blue");
    EXPECT_EQ(sheet->cards->currentRow(), 2) << "Enter moves down as in a spreadsheet";

    // A value keeps the pairs of the other list; the columns give the order.
    clickCell(0, 4);
    typeKeys("gold");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(Globals::cardProp(1), "Value=3|Colour=gold|Rank=1");

    // The copies by the dialog's rule; the page's label follows.
    clickCell(2, 2);
    typeKeys("4");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(form->commonList->List(2), "(x4)c.jpg");
    EXPECT_EQ(form->commLabel->Caption(), "Cards: 3 (tot: 7)");

    // A comma cannot be stored: refused with a message, the card as it was.
    clickCell(1, 3);
    typeKeys("1,5");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].contains("\",\"")) << messages[0].toStdString();
    EXPECT_EQ(Globals::cardProp(2), "Colour=blue");
}

TEST_F(DeckSheet, OneValueTypedOnSelectedRowsGoesToThemAll) {
    clickCell(0, 2);
    clickCell(2, 2, Qt::ShiftModifier);
    EXPECT_EQ(sheet->cards->selectedRows(), (std::vector<int>{0, 1, 2}));
    typeKeys("3");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(form->commonList->List(0), "(x3)a.bmp");
    EXPECT_EQ(form->commonList->List(1), "(x3)b.bmp");
    EXPECT_EQ(form->commonList->List(2), "(x3)c.jpg");
    EXPECT_EQ(Globals::cardProp(3), "Colour=red") << "the values stay";
}

TEST_F(DeckSheet, ThePageAndTheSheetShowOneDeck) {
    form->File1->setSelected(1, true);
    click(form->Command1);
    QCoreApplication::processEvents();
    EXPECT_EQ(sheet->cards->Rows(), 4);
    EXPECT_EQ(sheet->cards->Cell(3, 1), "b.bmp");
    form->commonList->setListIndex(0);
    click(form->Command6);
    QCoreApplication::processEvents();
    EXPECT_EQ(sheet->cards->Rows(), 3);
    EXPECT_EQ(sheet->cards->Cell(0, 1), "b.bmp");
}

TEST_F(DeckSheet, RestingOnANameShowsItsPictureBesideTheList) {
    sheet->Unload(); // the pointer must find the page, not the sheet over it
    activate();
    QListWidget* files = listOf(form->File1);
    QTest::mouseMove(files->viewport(), rowCentre(form->File1, 1));
    QWidget* preview = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == "cardPreview")
            preview = w;
    ASSERT_NE(preview, nullptr);
    EXPECT_TRUE(preview->isVisible());
    auto* name = preview->findChild<QLabel*>("previewName");
    ASSERT_NE(name, nullptr);
    EXPECT_EQ(name->text(), "b.bmp");
    const QRect list(files->mapToGlobal(QPoint(0, 0)), files->size());
    EXPECT_FALSE(preview->geometry().intersects(list)) << "the preview must not cover the list";
}

TEST_F(DeckSheet, APictureDroppedOnTheCardsIsBroughtInAndAdded) {
    QImage picture(10, 10, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    ASSERT_TRUE(picture.save(dir.filePath("outside/hero.png")) ||
                (QDir().mkpath(dir.filePath("outside")) &&
                 picture.save(dir.filePath("outside/hero.png"))));
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(dir.filePath("outside/hero.png"))});
    QListWidget* cards = listOf(form->commonList);
    const QPoint at = cards->viewport()->rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &mime, Qt::LeftButton, {});
    QApplication::sendEvent(cards->viewport(), &enter);
    QDropEvent drop(at, Qt::CopyAction, &mime, Qt::LeftButton, {});
    QApplication::sendEvent(cards->viewport(), &drop);
    QCoreApplication::processEvents(); // the drop is taken once its event is over
    EXPECT_TRUE(QFileInfo::exists(dir.filePath("cards/hero.bmp")));
    ASSERT_EQ(form->commonList->ListCount(), 4);
    EXPECT_EQ(form->commonList->List(3), "hero.bmp");
    ASSERT_EQ(messages.size(), 1) << "the user is told of the conversion";
    EXPECT_TRUE(messages[0].contains("white")) << messages[0].toStdString();
}

} // namespace
