// The real program's way in: mouse and keyboard events on the widgets reach
// the same handlers, with Validate able to swallow a click.

#include "runtime/Runtime.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"
#include "app/Program.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

class InteractiveProgram : public ::testing::Test {
protected:
    void SetUp() override {
        rt::installInteractiveSupport();
        rt::setAppPath(dir.path());
        rt::hooks().msgBox = [this](const QString& text, int) { messages << text; };
        form = static_cast<MainForm*>(wizard::startProgram());
        form->activateWindow();
    }
    void TearDown() override {
        wizard::stopProgram();
        rt::hooks().msgBox = nullptr;
    }
    QTemporaryDir dir;
    QStringList messages;
    MainForm* form = nullptr;
};

} // namespace

TEST_F(InteractiveProgram, TypingAndClickingReachTheHandlers) {
    QTest::keyClicks(form->NameTXT->widget(), "Duel");
    EXPECT_EQ(form->NameTXT->Text(), "Duel");
    QTest::mouseClick(form->NextStep->widget(), Qt::LeftButton);
    EXPECT_EQ(Globals::CurrentFrame, 1);

    QTest::mouseClick(form->PlNum->widget(), Qt::LeftButton);
    QTest::keyClicks(form->PlNum->widget(), "3");
    EXPECT_EQ(form->PlNum->Text(), "3");
    EXPECT_TRUE(form->PLname[2]->Visible());
    EXPECT_FALSE(form->PLname[3]->Visible());
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(InteractiveProgram, ARefusedNumberKeepsTheFocusAndSwallowsTheClick) {
    form->NameTXT->setText("Duel");
    QTest::mouseClick(form->NextStep->widget(), Qt::LeftButton);
    ASSERT_EQ(Globals::CurrentFrame, 1);
    QTest::mouseClick(form->PlNum->widget(), Qt::LeftButton);
    ASSERT_EQ(rt::focusedControl(), form->PlNum);
    QTest::keyClicks(form->PlNum->widget(), "9");
    ASSERT_EQ(messages, QStringList{"Please select a number from 1 to 6"});

    QTest::mouseClick(form->NextStep->widget(), Qt::LeftButton);
    EXPECT_EQ(Globals::CurrentFrame, 1) << "the click got past a refused Validate";
    EXPECT_EQ(rt::focusedControl(), form->PlNum);
    EXPECT_EQ(messages.size(), 2);

    QTest::keyClick(form->PlNum->widget(), Qt::Key_Backspace);
    QTest::keyClicks(form->PlNum->widget(), "2");
    QTest::mouseClick(form->NextStep->widget(), Qt::LeftButton);
    EXPECT_EQ(Globals::CurrentFrame, 3);
}

TEST_F(InteractiveProgram, EnterInTheNameBoxLoadsTheGameOnce) {
    QFile game(dir.filePath("Duel.game"));
    ASSERT_TRUE(game.open(QIODevice::WriteOnly));
    game.write("[GAME]\r\ndescription=Two sides\r\nplayers=9\r\n");
    game.close();
    wizard::stopProgram();
    form = static_cast<MainForm*>(wizard::startProgram());
    ASSERT_EQ(form->NameTXT->ListCount(), 1);

    int picks = 0;
    const auto pick = form->NameTXT->Click;
    form->NameTXT->Click = [&] {
        ++picks;
        pick();
    };
    // The key goes where a user's key goes: to the widget that has the focus.
    QWidget* focus =
        QApplication::focusWidget() ? QApplication::focusWidget() : form->NameTXT->widget();
    QTest::keyClicks(focus, "Duel");
    QTest::keyClick(focus, Qt::Key_Return);
    EXPECT_EQ(form->descTxt->Text(), "Two sides");
    EXPECT_EQ(messages, QStringList{"Please select a number from 1 to 6"});
    EXPECT_EQ(picks, 0) << "Enter was taken for a pick from the list";
}

TEST_F(InteractiveProgram, SaveWaitsForTheCheckFormThenWrites) {
    rt::installDefaultHooks();
    rt::hooks().msgBox = [this](const QString& text, int) { messages << text; };
    form->NameTXT->setText("Duel");
    bool sawForm = false;
    // The check form is modal: the key that closes it comes from inside its wait.
    QTimer::singleShot(0, [&] {
        rt::Form* check = rt::loadedForm("CheckForm");
        sawForm = check && check->isVisible();
        if (check)
            QTest::keyClick(check->get<rt::TextBox>("Text1")->widget(), Qt::Key_Space);
    });
    QTest::mouseClick(form->Command2->widget(), Qt::LeftButton);
    EXPECT_TRUE(sawForm);
    EXPECT_EQ(rt::loadedForm("CheckForm"), nullptr);
    rt::actionEnded();
    QFile game(dir.filePath("Duel.game"));
    ASSERT_TRUE(game.open(QIODevice::ReadOnly));
    EXPECT_TRUE(game.readAll().startsWith("[GAME]\r\nname=Duel\r\n"));
}

TEST_F(InteractiveProgram, EnterInTheDescriptionBreaksTheLineAsOnWindows) {
    QTest::mouseClick(form->descTxt->widget(), Qt::LeftButton);
    QTest::keyClicks(form->descTxt->widget(), "Two");
    QTest::keyClick(form->descTxt->widget(), Qt::Key_Return);
    QTest::keyClicks(form->descTxt->widget(), "sides");
    EXPECT_EQ(form->descTxt->Text(), "Two\r\nsides");
}

TEST_F(InteractiveProgram, AClickOnTheStartTipsReachesTheirHandler) {
    const QString tips = form->mainHelp->Caption();
    ASSERT_EQ(HelpMgmt::TipsClicks, 0);
    QTest::mouseClick(form->mainHelp->widget(), Qt::LeftButton);
    EXPECT_EQ(HelpMgmt::TipsClicks, 1);
    QTest::mouseClick(form->mainHelp->widget(), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(HelpMgmt::TipsClicks, 2);
    EXPECT_EQ(form->mainHelp->Caption(), tips);
}

TEST_F(InteractiveProgram, F7OpensTheWholeGameCheck) {
    rt::installDefaultHooks();
    rt::hooks().msgBox = [this](const QString& text, int) { messages << text; };
    QFile game(dir.filePath("Duel.game"));
    ASSERT_TRUE(game.open(QIODevice::WriteOnly));
    game.write("[GAME]\r\nplayers=7\r\n");
    game.close();
    form->NameTXT->setText("Duel");
    // A window's shortcut needs the window active, as a user's window is.
    QApplication::setActiveWindow(form);
    ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    QString firstRow;
    // The window is modal: what looks at it runs inside its wait.
    QTimer::singleShot(0, [&] {
        rt::Form* check = rt::loadedForm("GameCheckForm");
        if (!check)
            return;
        firstRow = check->get<rt::ListBox>("Findings")->List(0);
        check->Unload();
    });
    QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : form, Qt::Key_F7);
    EXPECT_EQ(firstRow, "The game");
    EXPECT_EQ(rt::loadedForm("GameCheckForm"), nullptr);
    EXPECT_EQ(Globals::CurrentFrame, 0);
}
