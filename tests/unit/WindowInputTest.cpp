// Input as the window system delivers it: a press reaches the window first and
// Qt moves the focus on its way to the widget, so a Validate that refuses must
// be seen there, or a click gets past it.

#include "game/GameFile.h"
#include "runtime/Runtime.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"
#include "app/Program.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class WindowInput : public ::testing::Test {
protected:
    void SetUp() override {
        rt::installInteractiveSupport();
        rt::setAppPath(dir.path());
        rt::hooks().msgBox = [this](const QString& text, int) { messages << text; };
        QDir(dir.path()).mkdir("cards");
        QFile file(dir.filePath("Duel.game"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[GAME]\r\ndescription=Two sides\r\ndirectory=cards\r\nplayers=2\r\ncommon_decks=1\r\n"
                   "[Player 1]\r\nname=Ann\r\n");
        file.close();
        form = static_cast<MainForm*>(wizard::startProgram());
        QApplication::setActiveWindow(form);
        ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    }
    void TearDown() override {
        wizard::stopProgram();
        rt::hooks().msgBox = nullptr;
    }
    // A click at the middle of a control, sent to the window as the mouse sends it.
    void click(rt::Control* c) {
        QWidget* w = c->widget();
        QTest::mouseClick(form->windowHandle(), Qt::LeftButton, {},
                          w->mapTo(form, w->rect().center()));
    }
    void keys(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    void key(Qt::Key k) { QTest::keyClick(form->windowHandle(), k); }
    QTemporaryDir dir;
    QStringList messages;
    MainForm* form = nullptr;
};

} // namespace

TEST_F(WindowInput, ARefusedNumberHoldsAgainstTheMouseOnEveryPage) {
    // Leaving the name box by a click loads the game it names.
    click(form->NameTXT);
    keys("Duel");
    click(form->NextStep);
    ASSERT_EQ(Globals::CurrentFrame, game::page::PlayersInfo);
    EXPECT_EQ(form->descTxt->Text(), "Two sides");
    EXPECT_EQ(form->PLname[0]->Text(), "Ann");

    click(form->PlNum);
    key(Qt::Key_End);
    key(Qt::Key_Backspace);
    keys("7");
    ASSERT_EQ(messages, QStringList{"Please select a number from 1 to 6"});
    for (rt::CommandButton* b : {form->NextStep, form->PrevStep, form->Command2}) {
        click(b);
        EXPECT_EQ(Globals::CurrentFrame, game::page::PlayersInfo) << b->name().toStdString();
        EXPECT_EQ(rt::focusedControl(), form->PlNum);
    }
    EXPECT_EQ(messages.size(), 4);
    click(form->Wiz[1]);
    click(form->TreeBtn);
    EXPECT_EQ(QApplication::focusWidget(), form->PlNum->widget()) << "the page took the focus";
    EXPECT_EQ(rt::loadedForm("TreeForm"), nullptr);
    key(Qt::Key_Backspace);
    keys("3");
    EXPECT_TRUE(form->PLname[2]->Visible());
    click(form->NextStep);
    ASSERT_EQ(Globals::CurrentFrame, game::page::DecksInfo);

    messages.clear();
    click(form->CommDecksNum);
    key(Qt::Key_End);
    key(Qt::Key_Backspace);
    keys("9");
    ASSERT_EQ(messages.size(), 1);
    click(form->PrevStep);
    EXPECT_EQ(Globals::CurrentFrame, game::page::DecksInfo);
    EXPECT_EQ(messages.size(), 2);
    key(Qt::Key_Backspace);
    keys("1");
    // Tab leaves the box once the number stands, and the keyboard presses on.
    key(Qt::Key_Tab);
    click(form->ShowCommonDeck[0]);
    EXPECT_EQ(Globals::CurrentFrame, game::page::DecksDetail);
    EXPECT_EQ(messages.size(), 2);
}

TEST_F(WindowInput, TheKeyboardAloneWalksThePages) {
    click(form->NameTXT);
    keys("Duel");
    // Tab from the name box runs its Validate too: the game loads.
    key(Qt::Key_Tab);
    EXPECT_EQ(form->descTxt->Text(), "Two sides");
    QApplication::focusWidget()->clearFocus();
    form->NextStep->widget()->setFocus();
    key(Qt::Key_Space);
    EXPECT_EQ(Globals::CurrentFrame, game::page::PlayersInfo);
    key(Qt::Key_Space);
    EXPECT_EQ(Globals::CurrentFrame, game::page::DecksInfo);
    key(Qt::Key_Space);
    EXPECT_EQ(Globals::CurrentFrame, game::page::Properties);
    form->UsePropOpt->widget()->setFocus();
    key(Qt::Key_Space);
    EXPECT_EQ(form->UsePropOpt->Value(), 1);
    EXPECT_TRUE(form->pNameFrame->Visible());
    click(form->pListName[0]);
    keys("Figures");
    EXPECT_EQ(form->pListName[0]->Text(), "Figures");
    click(form->repNum);
    keys("1");
    click(form->ShowReport[0]);
    EXPECT_EQ(Globals::CurrentFrame, game::page::ReportDetail);
    click(form->RepTitle);
    keys("Score");
    EXPECT_EQ(form->RepTitle->Text(), "Score");
    click(form->PrevStep);
    EXPECT_EQ(Globals::CurrentFrame, game::page::Properties);
    EXPECT_TRUE(messages.isEmpty());
}
