// Mouse and keyboard events on the widgets reach the handlers; Validate can swallow a click.

#include "ProgramTest.h"

namespace {

class InteractiveProgram : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        show();
    }
};

TEST_F(InteractiveProgram, ARefusedNumberKeepsTheFocusAndSwallowsTheClick) {
    type(form->NameTXT, "Duel");
    EXPECT_EQ(form->NameTXT->Text(), "Duel");
    click(form->NextStep);
    ASSERT_EQ(Globals::CurrentFrame, 1);
    click(form->PlNum);
    ASSERT_EQ(rt::focusedControl(), form->PlNum);
    type(form->PlNum, "9");
    ASSERT_EQ(messages, QStringList{"Please select a number from 1 to 6"});

    click(form->NextStep);
    EXPECT_EQ(Globals::CurrentFrame, 1) << "the click got past a refused Validate";
    EXPECT_EQ(rt::focusedControl(), form->PlNum);
    EXPECT_EQ(messages.size(), 2);

    press(form->PlNum, Qt::Key_Backspace);
    type(form->PlNum, "3");
    EXPECT_EQ(form->PlNum->Text(), "3");
    EXPECT_TRUE(form->PLname[2]->Visible());
    EXPECT_FALSE(form->PLname[3]->Visible());
    click(form->NextStep);
    EXPECT_EQ(Globals::CurrentFrame, 3);
    EXPECT_EQ(messages.size(), 2);
}

TEST_F(InteractiveProgram, EnterInTheNameBoxLoadsTheGameOnce) {
    file("Duel.game", "[GAME]\r\ndescription=Two sides\r\nplayers=9\r\n");
    wizard::stopProgram();
    start();
    ASSERT_EQ(form->NameTXT->ListCount(), 1);
    int picks = 0;
    const auto pick = form->NameTXT->Click;
    form->NameTXT->Click = [&] {
        ++picks;
        pick();
    };
    QWidget* focus = focused(form->NameTXT->widget());
    QTest::keyClicks(focus, "Duel");
    QTest::keyClick(focus, Qt::Key_Return);
    EXPECT_EQ(form->descTxt->Text(), "Two sides");
    EXPECT_EQ(messages, QStringList{"Please select a number from 1 to 6"});
    EXPECT_EQ(picks, 0) << "Enter was taken for a pick from the list";
}

TEST_F(InteractiveProgram, SaveWaitsForTheCheckFormThenWrites) {
    form->NameTXT->setText("Duel");
    bool sawForm = false;
    whileModal([&] {
        rt::Form* check = rt::loadedForm("CheckForm");
        sawForm = check && check->isVisible();
        if (check)
            press(check->get<rt::TextBox>("Text1"), Qt::Key_Space);
    });
    click(form->Command2);
    EXPECT_TRUE(sawForm);
    EXPECT_EQ(rt::loadedForm("CheckForm"), nullptr);
    rt::actionEnded();
    EXPECT_TRUE(read("Duel.game").startsWith("[GAME]\r\nname=Duel\r\n"));
}

TEST_F(InteractiveProgram, EnterBreaksTheDescriptionClicksCountOnTheTipsAndF7OpensTheCheck) {
    click(form->descTxt);
    type(form->descTxt, "Two");
    press(form->descTxt, Qt::Key_Return);
    type(form->descTxt, "sides");
    EXPECT_EQ(form->descTxt->Text(), "Two\r\nsides");

    const QString tips = form->mainHelp->Caption();
    ASSERT_EQ(HelpMgmt::TipsClicks, 0);
    click(form->mainHelp);
    EXPECT_EQ(HelpMgmt::TipsClicks, 1);
    QTest::mouseClick(form->mainHelp->widget(), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(HelpMgmt::TipsClicks, 2);
    EXPECT_EQ(form->mainHelp->Caption(), tips);

    file("Duel.game", "[GAME]\r\nplayers=7\r\n");
    form->NameTXT->setText("Duel");
    QString firstRow;
    whileModal([&] {
        if (rt::Form* check = rt::loadedForm("GameCheckForm")) {
            firstRow = check->get<rt::ListBox>("Findings")->List(0);
            check->Unload();
        }
    });
    QTest::keyClick(focused(form), Qt::Key_F7);
    EXPECT_EQ(firstRow, "The game");
    EXPECT_EQ(rt::loadedForm("GameCheckForm"), nullptr);
    EXPECT_EQ(Globals::CurrentFrame, 0);
}

} // namespace
