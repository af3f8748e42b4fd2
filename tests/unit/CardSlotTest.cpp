// Slots of the open deck once its 16-bit counter is used up by a file of too many cards.

#include "ProgramTest.h"

using CardSlots = ProgramTest;

TEST_F(CardSlots, PastTheCountersLimitEveryRowStillGetsASlotOfItsOwn) {
    file("cards/a.bmp", "");
    file("Huge.game",
         "[GAME]\r\ndirectory=cards\r\n[COMMON 1]\r\ndecksize=99999\r\n"
         "card1=first.bmp,,A=1\r\ncard32767=last.bmp,,B=2\r\ncard32768=beyond.bmp\r\n");
    start();
    form->NameTXT->setText("Huge");
    form->LoadGameData();
    form->ShowCommonDeck_Click(0);

    ASSERT_EQ(form->commonList->ListCount(), 32767);
    EXPECT_EQ(form->commonList->List(32766), "last.bmp");
    EXPECT_EQ(Globals::CardCounter, 32767);
    EXPECT_EQ(Globals::cardProp(32767), "B=2");

    form->File1->setSelected(0, true);
    form->Command1_Click();
    form->Command1_Click();
    ASSERT_EQ(form->commonList->ListCount(), 32769);
    EXPECT_EQ(form->commonList->ItemData(32767), 32768);
    EXPECT_EQ(form->commonList->ItemData(32768), 32769);
    EXPECT_EQ(Globals::CardCounter, 32767) << "the counter stays at its limit";
    Globals::cardProp(32768) = "C=3";
    EXPECT_EQ(Globals::cardProp(32767), "B=2");
    EXPECT_EQ(Globals::cardProp(32769), "");
    EXPECT_EQ(Globals::cardProp(1), "A=1");

    // The limit reached by rows added, not by a load: the table is short, the slot still new.
    form->Command7_Click();
    form->LoadDeckData("COMMON 2");
    Globals::CardCounter = 32766;
    form->Command1_Click();
    form->Command1_Click();
    ASSERT_EQ(form->commonList->ListCount(), 2);
    EXPECT_EQ(form->commonList->ItemData(0), 32767);
    EXPECT_EQ(form->commonList->ItemData(1), 32768);
}
