// The window around the pages: zoom, the status bar, New game, the title's
// mark and About, through the menu's own entries.

#include "desktop/Desktop.h"
#include "ProgramTest.h"
#include "desktop/AboutForm.h"

#include <QAction>
#include <QLabel>
#include <QScreen>

namespace {

class Desktop : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        file("Duel.game", "[GAME]\r\nname=Duel\r\ndescription=Two sides\r\ndirectory=cards\r\n"
                          "players=1\r\ncommon_decks=1\r\n[Player 1]\r\nname=Ann\r\n[COMMON 1]\r\n"
                          "decksize=1\r\ncard1=a.bmp\r\n");
        image("cards/a.bmp", 20, 30);
        show();
    }
    void trigger(const char* entry) {
        auto* action = mainForm()->findChild<QAction*>(QString::fromLatin1(entry));
        ASSERT_NE(action, nullptr) << entry;
        action->trigger();
    }
};

} // namespace

TEST_F(Desktop, ZoomGrowsThePageButNotTheLengthsTheProgramReads) {
    const int width = form->Width(), height = form->Height(), scale = form->ScaleWidth();
    const int nameWidth = form->NameTXT->widget()->width();
    const int nameTwips = form->NameTXT->Width();
    const qreal points = form->descTxt->widget()->font().pointSizeF();
    QTest::keyClick(form->NameTXT->widget(), Qt::Key_Equal, Qt::ControlModifier);
    QTest::keyClick(form->NameTXT->widget(), Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(form->zoom(), 1.25);
    EXPECT_NEAR(form->NameTXT->widget()->width(), nameWidth * 1.25, 1.0);
    EXPECT_DOUBLE_EQ(form->descTxt->widget()->font().pointSizeF(), points * 1.25);
    EXPECT_NEAR(form->client()->width(), rt::toPixels(scale) * 1.25, 1.0);
    EXPECT_EQ(form->Width(), width);
    EXPECT_EQ(form->Height(), height);
    EXPECT_EQ(form->ScaleWidth(), scale);
    EXPECT_EQ(form->NameTXT->Width(), nameTwips);

    // A control placed by the program at a zoom stands where it would at 1.
    form->helpLabel0->setLeft(1500);
    EXPECT_NEAR(form->helpLabel0->widget()->x(), 125, 1);
    for (int i = 0; i < 30; ++i)
        desktop::zoomStep(form, +1);
    EXPECT_GE(form->zoom(), 1.25);
    EXPECT_TRUE(
        form->screen()->availableGeometry().contains(QRect(QPoint(), form->frameGeometry().size())))
        << "the window outgrew the screen";
    form->setZoom(40);
    EXPECT_DOUBLE_EQ(form->zoom(), rt::Form::MaxZoom);
    for (int i = 0; i < 30; ++i)
        desktop::zoomStep(form, -1);
    EXPECT_DOUBLE_EQ(form->zoom(), rt::Form::MinZoom);
    trigger("zoomActual");
    EXPECT_DOUBLE_EQ(form->zoom(), 1.0);
    EXPECT_EQ(form->NameTXT->widget()->width(), nameWidth);
    EXPECT_EQ(form->Width(), width);

    // A maximised window is filled, and gives the zoom back when it is restored.
    desktop::zoomStep(form, +1);
    form->showMaximized();
    QTest::qWait(50);
    if (form->isMaximized()) {
        EXPECT_GT(form->zoom(), 1.1);
        const double filled = form->zoom();
        desktop::zoomStep(form, +1);
        EXPECT_DOUBLE_EQ(form->zoom(), filled) << "the pages outgrew the maximised window";
        desktop::zoomStep(form, -1);
        EXPECT_LT(form->zoom(), filled);
        form->showNormal();
        QTest::qWait(50);
        EXPECT_DOUBLE_EQ(form->zoom(), 1.1);
    }
}

TEST_F(Desktop, TheStatusBarShowsAnyMessageOnOneLineAndKeepsItsText) {
    const int width = form->width();
    QString message = QStringLiteral("Could not save /tmp/x/Skirmish.game: the file is read-only.");
    message += QStringLiteral("\r\nsecond line ") + QString(2000, QLatin1Char('x'));
    form->showStatus(message);
    EXPECT_EQ(form->statusLine->Caption(), message);
    auto* label = qobject_cast<QLabel*>(form->statusLine->widget());
    ASSERT_NE(label, nullptr);
    EXPECT_FALSE(label->text().contains('\n'));
    EXPECT_TRUE(label->text().startsWith(
        "Could not save /tmp/x/Skirmish.game: the file is read-only. second"));
    EXPECT_EQ(label->toolTip(), message);
    EXPECT_TRUE(label->isVisible());
    EXPECT_EQ(form->width(), width) << "a long message widened the window";
    EXPECT_GT(label->window()->height() - label->mapTo(label->window(), QPoint()).y(), 0);
}

TEST_F(Desktop, NewGameForgetsThePagesAndClosesWhatPointsAtThem) {
    rt::hooks().modalWait = [](rt::Form*) {};
    form->NameTXT->setText("Duel");
    form->LoadGameData();
    form->ShowCommonDeck_Click(0);
    ASSERT_EQ(form->commonList->ListCount(), 1);
    form->commonList->setListIndex(0);
    form->commonList->userDblClick();
    ASSERT_NE(rt::loadedForm("CardDetailForm"), nullptr);
    form->PLname[0]->setText("Bea");
    file("Other.game");
    const QByteArray before = read("Duel.game");

    // Not while a form waits for its answer.
    rt::Load("CheckForm")->Show(1);
    EXPECT_FALSE(desktop::newGame());
    EXPECT_EQ(mainForm(), form);
    rt::loadedForm("CheckForm")->Unload();

    desktop::zoomStep(form, +1);
    const QSize size = form->size();
    trigger("newGame");
    MainForm* fresh = mainForm();
    ASSERT_NE(fresh, form);
    EXPECT_EQ(fresh->size(), size);
    EXPECT_DOUBLE_EQ(fresh->zoom(), 1.1);
    EXPECT_EQ(rt::loadedForm("CardDetailForm"), nullptr);
    EXPECT_EQ(Globals::CurrentFrame, 0);
    EXPECT_EQ(Globals::CardCounter, 0);
    EXPECT_TRUE(fresh->Wiz[0]->Visible());
    EXPECT_FALSE(fresh->Wiz[4]->Visible());
    EXPECT_EQ(fresh->NameTXT->Text(), "");
    EXPECT_EQ(fresh->NameTXT->ListCount(), 2);
    EXPECT_EQ(fresh->PLname[0]->Text(), "");
    EXPECT_EQ(fresh->commonList->ListCount(), 0);
    EXPECT_EQ(read("Duel.game"), before);
    EXPECT_NE(fresh->findChild<QAction*>("saveGame"), nullptr) << "the new form has no menu";
    EXPECT_TRUE(messages.isEmpty()) << messages.join('|').toStdString();
    form = fresh;
}

TEST_F(Desktop, TheTitleMarksEditsThatSaveHasNotWritten) {
    const QString caption = form->Caption();
    form->NameTXT->setText("Duel");
    form->LoadGameData();
    desktop::refreshUnsavedMark(form);
    EXPECT_FALSE(form->isWindowModified());
    form->descTxt->setText("Three sides");
    desktop::refreshUnsavedMark(form);
    EXPECT_TRUE(form->isWindowModified());
    EXPECT_EQ(form->Caption(), caption);
    EXPECT_TRUE(form->windowTitle().startsWith(caption));
    form->CheckAndSave();
    desktop::refreshUnsavedMark(form);
    EXPECT_FALSE(form->isWindowModified());
}

TEST_F(Desktop, AboutTellsTheVersionAndTheFolderAndClosesWithEnter) {
    QString folder;
    bool closed = false;
    rt::hooks().modalWait = [&](rt::Form* about) {
        folder = static_cast<AboutForm*>(about)->folder->Caption();
        QTest::keyClick(about->focusWidget() ? about->focusWidget() : about, Qt::Key_Return);
        closed = about->isUnloaded();
    };
    trigger("about");
    EXPECT_TRUE(folder.endsWith(QDir::toNativeSeparators(dir.path()))) << folder.toStdString();
    EXPECT_TRUE(closed);
}
