// Input as the window system delivers it: a press reaches the window first and
// Qt moves the focus on its way to the widget, so a Validate that refuses must
// be seen there, or a click gets past it.

#include "ProgramTest.h"
#include "game/GameFile.h"

namespace {

class WindowInput : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        file("cards/.keep");
        file("Duel.game", "[GAME]\r\ndescription=Two sides\r\ndirectory=cards\r\nplayers=2\r\n"
                          "common_decks=1\r\n[Player 1]\r\nname=Ann\r\n");
        show();
    }
    void keys(const QString& text) { QTest::keyClicks(focused(form), text); }
    void key(Qt::Key k) { QTest::keyClick(form->windowHandle(), k); }
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
    EXPECT_EQ(QApplication::focusWidget(), form->PlNum->widget()) << "a bare spot took the focus";
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

TEST_F(WindowInput, ThePlayerPageTheIndexAndTheDialogsByMouseAndKeys) {
    image("cards/table.bmp", 8, 8);
    click(form->NameTXT);
    keys("Duel");
    click(form->DirName);
    // The desktop picker: a row double clicked is the choice.
    whileModal([this] {
        rt::Form* picker = rt::loadedForm("ShowImgList");
        ASSERT_NE(picker, nullptr);
        doubleClickRow(picker->control("File1"), 0);
    });
    click(form->SetDesktopImage);
    EXPECT_EQ(form->DeskTopImage->Caption(), "table.bmp");
    activate();

    click(form->NextStep);
    click(form->PL_data[0]);
    ASSERT_EQ(Globals::CurrentFrame, game::page::PlayersDetail);
    click(form->NumPLdecks);
    keys("1");
    ASSERT_TRUE(form->ShowPlayerDeck[0]->Visible());
    click(form->ShowPlayerDeck[0]);
    ASSERT_EQ(Globals::CurrentFrame, game::page::DecksDetail);
    whileModal([this] {
        rt::Form* options = rt::loadedForm("AdvancedDeckPropForm");
        ASSERT_NE(options, nullptr);
        click(options->control("ViewDiscardOpt"));
        options->close();
    });
    click(form->Command9);
    EXPECT_TRUE(
        read("Duel.game").contains("[DECK 1 PLAYER 1]\r\nsplit=false\r\nviewDiscard=false\r\n"))
        << "the ticked box reads \"examined\", which the file says as false";
    activate();

    // The index: a double click on a row goes there.
    whileModal([this] {
        rt::Form* index = rt::loadedForm("TreeForm");
        ASSERT_NE(index, nullptr);
        doubleClickRow(index->control("GameList"), 0);
        if (!index->isUnloaded())
            index->close();
    });
    click(form->TreeBtn);
    EXPECT_EQ(Globals::CurrentFrame, game::page::GeneralInfo);
    EXPECT_TRUE(messages.isEmpty()) << messages.join('|').toStdString();
}
