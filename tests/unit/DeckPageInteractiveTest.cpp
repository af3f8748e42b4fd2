// Page 4 through the real widgets: mouse clicks in File1, a double click and
// Enter in the card list, and the viewer's entry point for the card dialog.

#include "decks/ShowCrdForm.h"
#include "runtime/Runtime.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"
#include "app/Program.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

class DeckPage : public ::testing::Test {
protected:
    void SetUp() override {
        rt::installInteractiveSupport();
        rt::installDefaultHooks();
        rt::hooks().msgBox = [this](const QString& text, int) { messages << text; };
        rt::setAppPath(dir.path());
        QDir(dir.path()).mkdir("cards");
        image("cards/a.bmp", 20, 30);
        image("cards/b.bmp", 40, 10);
        image("cards/c.jpg", 8, 8);
        QFile game(dir.filePath("Duel.game"));
        ASSERT_TRUE(game.open(QIODevice::WriteOnly));
        game.write("[GAME]\r\ndirectory=cards\r\ncommon_decks=1\r\n[COMMON 1]\r\ndecksize=2\r\n"
                   "card1=(x2)a.bmp\r\ncard2=b.bmp\r\n");
        game.close();
        form = static_cast<MainForm*>(wizard::startProgram());
        form->activateWindow();
        form->NameTXT->setText("Duel");
        form->LoadGameData();
        form->ShowCommonDeck_Click(0);
        ASSERT_EQ(form->File1->ListCount(), 3);
    }
    void TearDown() override {
        wizard::stopProgram();
        rt::hooks().msgBox = nullptr;
        rt::hooks().modalWait = nullptr;
    }
    void image(const char* name, int w, int h) {
        QImage picture(w, h, QImage::Format_RGB32);
        picture.fill(Qt::darkGreen);
        ASSERT_TRUE(picture.save(dir.filePath(name)));
    }
    static QListWidget* widgetOf(rt::ListBox* list) {
        return qobject_cast<QListWidget*>(list->widget());
    }
    static QPoint rowCentre(rt::ListBox* list, int row) {
        QListWidget* w = widgetOf(list);
        return w->visualItemRect(w->item(row)).center();
    }
    QTemporaryDir dir;
    QStringList messages;
    MainForm* form = nullptr;
};

} // namespace

TEST_F(DeckPage, ClicksInFile1ToggleOneImageEachAndTheArrowAddsThem) {
    QWidget* view = widgetOf(form->File1)->viewport();
    QTest::mouseClick(view, Qt::LeftButton, {}, rowCentre(form->File1, 2));
    QTest::mouseClick(view, Qt::LeftButton, {}, rowCentre(form->File1, 0));
    EXPECT_TRUE(form->File1->Selected(0));
    EXPECT_FALSE(form->File1->Selected(1));
    EXPECT_TRUE(form->File1->Selected(2));
    QTest::mouseClick(view, Qt::LeftButton, {}, rowCentre(form->File1, 2));
    EXPECT_FALSE(form->File1->Selected(2)) << "a second click must take the image out again";

    QTest::mouseClick(form->Command1->widget(), Qt::LeftButton);
    ASSERT_EQ(form->commonList->ListCount(), 3);
    EXPECT_EQ(form->commonList->List(2), "a.bmp");
    EXPECT_EQ(form->commonList->ItemData(2), 3);
    EXPECT_EQ(form->commLabel->Caption(), "Cards: 3 (tot: 4)");
}

TEST_F(DeckPage, ADoubleClickInTheCardListOpensTheDialogBesideTheWizard) {
    form->commonList->setList(1, "(x5)b.bmp");
    QWidget* view = widgetOf(form->commonList)->viewport();
    // The first click of a double click selects the row, as a user's does.
    QTest::mouseClick(view, Qt::LeftButton, {}, rowCentre(form->commonList, 1));
    QTest::mouseDClick(view, Qt::LeftButton, {}, rowCentre(form->commonList, 1));
    rt::Form* dialog = rt::loadedForm("CardDetailForm");
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_FALSE(dialog->isModal());
    EXPECT_EQ(form->commonList->ListIndex(), 1);
    EXPECT_EQ(form->commLabel->Caption(), "Cards: 2 (tot: 7)");
}

TEST_F(DeckPage, EnterInTheCardListWaitsForTheDialog) {
    form->commonList->setListIndex(0);
    bool modal = false;
    QTimer::singleShot(0, [&] {
        if (rt::Form* dialog = rt::loadedForm("CardDetailForm")) {
            modal = dialog->isModal() && dialog->isVisible();
            dialog->close();
        }
    });
    QTest::keyClick(widgetOf(form->commonList), Qt::Key_Return);
    EXPECT_TRUE(modal);
    EXPECT_EQ(rt::loadedForm("CardDetailForm"), nullptr);

    QTest::keyClick(widgetOf(form->commonList), Qt::Key_A);
    EXPECT_EQ(rt::loadedForm("CardDetailForm"), nullptr);
}

TEST_F(DeckPage, ADoubleClickInFile1WaitsForTheViewer) {
    bool modal = false;
    int width = 0;
    QTimer::singleShot(0, [&] {
        if (auto* viewer = rt::loaded<ShowCrdForm>()) {
            modal = viewer->isModal() && viewer->isVisible();
            width = viewer->Width();
            QTest::keyClick(viewer, Qt::Key_Space);
        }
    });
    QWidget* view = widgetOf(form->File1)->viewport();
    QTest::mouseClick(view, Qt::LeftButton, {}, rowCentre(form->File1, 1));
    QTest::mouseDClick(view, Qt::LeftButton, {}, rowCentre(form->File1, 1));
    EXPECT_TRUE(modal);
    EXPECT_EQ(width, 40 * 15 + 80);
    EXPECT_EQ(rt::loaded<ShowCrdForm>(), nullptr) << "any key closes the viewer";
}

TEST_F(DeckPage, TheCardDialogsViewerIsReusedAndSizedAnew) {
    showCardImage("a.bmp", false);
    auto* viewer = rt::loaded<ShowCrdForm>();
    ASSERT_NE(viewer, nullptr);
    EXPECT_FALSE(viewer->isModal());
    EXPECT_EQ(viewer->Width(), 20 * 15 + 80);
    EXPECT_EQ(viewer->Height(), 30 * 15 + 320);

    showCardImage("b.bmp", false);
    EXPECT_EQ(rt::loaded<ShowCrdForm>(), viewer);
    EXPECT_EQ(viewer->Width(), 40 * 15 + 80);
    EXPECT_EQ(viewer->Height(), 10 * 15 + 320);
    EXPECT_TRUE(viewer->crdPict->Picture().endsWith("/cards/b.bmp"));

    // A double click in File1 while it is up takes it over rather than
    // waiting on it.
    form->File1->setListIndex(2);
    form->File1_DblClick();
    EXPECT_EQ(rt::loaded<ShowCrdForm>(), viewer);
    EXPECT_EQ(viewer->Width(), 8 * 15 + 80);

    showCardImage("missing.bmp", false);
    EXPECT_EQ(messages, QStringList{"Cannot open image cards/missing.bmp"});
    EXPECT_EQ(rt::loaded<ShowCrdForm>(), viewer) << "the open viewer is left as it was";
    EXPECT_EQ(viewer->Width(), 8 * 15 + 80);
}
