// Slots of the open deck once its 16-bit counter is used up: a deck whose file
// claims more cards than the count can hold.

#include "runtime/Runtime.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"
#include "app/Program.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(CardSlots, PastTheCountersLimitEveryRowStillGetsASlotOfItsOwn) {
    QTemporaryDir dir;
    rt::setAppPath(dir.path());
    rt::hooks().msgBox = [](const QString&, int) {};
    QDir(dir.path()).mkdir("cards");
    QFile(dir.filePath("cards/a.bmp")).open(QIODevice::WriteOnly);
    QFile game(dir.filePath("Huge.game"));
    ASSERT_TRUE(game.open(QIODevice::WriteOnly));
    game.write(
        "[GAME]\r\ndirectory=cards\r\n[COMMON 1]\r\ndecksize=99999\r\ncard1=first.bmp,,A=1\r\n"
        "card32767=last.bmp,,B=2\r\ncard32768=beyond.bmp\r\n");
    game.close();
    auto* form = static_cast<MainForm*>(wizard::startProgram());
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

    // The limit reached by rows added on the page, not by a load: the table
    // is still short, and the next slot must still be a new one.
    form->Command7_Click();
    form->LoadDeckData("COMMON 2");
    Globals::CardCounter = 32766;
    form->Command1_Click();
    form->Command1_Click();
    ASSERT_EQ(form->commonList->ListCount(), 2);
    EXPECT_EQ(form->commonList->ItemData(0), 32767);
    EXPECT_EQ(form->commonList->ItemData(1), 32768);
    wizard::stopProgram();
    rt::hooks().msgBox = nullptr;
}
