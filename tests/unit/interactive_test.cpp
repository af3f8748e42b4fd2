// The real program's way in: mouse and keyboard events on the widgets reach
// the same handlers, with Validate able to swallow a click.

#include "runtime/Runtime.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"
#include "wizard/Program.h"

#include <QApplication>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class InteractiveProgram : public ::testing::Test {
protected:
    void SetUp() override {
        static bool installed = false;
        if (!installed) {
            rt::installInteractiveSupport();
            installed = true;
        }
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
