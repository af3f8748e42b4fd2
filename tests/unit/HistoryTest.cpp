// Undo and redo through the keyboard of a real window, and a history driven
// far past what it keeps.

#include "ProgramTest.h"

#include "history/History.h"

#include <QAction>
#include <QLineEdit>

#include <set>

namespace {

class History : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        image("cards/a.bmp", 20, 30);
        image("cards/b.bmp", 20, 30);
        file("Duel.game", "[GAME]\r\ndirectory=cards\r\ncommon_decks=1\r\n[COMMON 1]\r\n"
                          "decksize=1\r\ncard1=(x2)a.bmp,,Rank=1\r\ndeal=5\r\n");
        show();
        form->NameTXT->setText("Duel");
        form->LoadGameData();
        form->ShowCommonDeck_Click(0);
        form->File1->setSelected(1, true);
        rt::actionEnded();
    }
    // One press of a page's button, as one user action.
    void act(const std::function<void()>& handler) {
        handler();
        rt::actionEnded();
    }
    QString entryText(const char* name) const {
        const auto* a = form->findChild<QAction*>(QString::fromLatin1(name));
        return a ? a->text() : QString();
    }
    void keys(QWidget* to, Qt::Key key, Qt::KeyboardModifiers mods) {
        QTest::keyClick(to, key, mods);
        rt::actionEnded();
    }
    // Every row has a slot of its own, none past what the counter handed out.
    void expectSlotsSound() const {
        std::set<qint32> seen;
        for (int i = 0; i < form->commonList->ListCount(); ++i) {
            const qint32 slot = form->commonList->ItemData(i);
            EXPECT_TRUE(seen.insert(slot).second) << "slot " << slot << " twice";
            EXPECT_LE(slot, Globals::CardCounter);
        }
    }
};

TEST_F(History, ControlZAndControlShiftZTakeStepsBackAndForthButNotOutOfATextBox) {
    act([this] { form->Command1_Click(); });
    act([this] { form->Command1_Click(); });
    EXPECT_EQ(entryText("undo"), "&Undo Add 1 card");
    EXPECT_EQ(entryText("redo"), "&Redo");

    form->commonList->widget()->setFocus();
    keys(form, Qt::Key_Z, Qt::ControlModifier);
    keys(form, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(form->commonList->ListCount(), 1);
    EXPECT_EQ(form->commLabel->Caption(), "Cards: 1 (tot: 2)");
    EXPECT_EQ(entryText("redo"), "&Redo Add 1 card");
    keys(form, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(form->commonList->ListCount(), 2);
    EXPECT_EQ(form->commonList->ItemData(1), 2);

    // In the deal's box the keys undo the typing, not a step of the deck.
    auto* deal = qobject_cast<QLineEdit*>(form->DealCrds->widget());
    ASSERT_NE(deal, nullptr);
    deal->setFocus();
    deal->end(false);
    QTest::keyClicks(deal, "0");
    rt::actionEnded();
    EXPECT_EQ(form->DealCrds->Text(), "50");
    keys(deal, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(form->DealCrds->Text(), "5");
    EXPECT_EQ(form->commonList->ListCount(), 2);

    form->commonList->widget()->setFocus();
    keys(form, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(form->commonList->ListCount(), 1);
    expectSlotsSound();
}

TEST_F(History, TenThousandStepsKeepTheLastThousandAndTheSlotsSound) {
    std::vector<int> rowsBefore;
    for (int i = 0; i < 10000; ++i) {
        rowsBefore.push_back(form->commonList->ListCount());
        if (i % 3 == 2) {
            form->commonList->setListIndex(0);
            act([this] { form->Command6_Click(); });
        } else {
            act([this] { form->Command1_Click(); });
        }
    }
    EXPECT_EQ(history::undoDepth(), history::StepsKept);
    EXPECT_LT(history::bytesHeld(), 1u << 20);

    int undone = 0;
    while (history::undo())
        ++undone;
    EXPECT_EQ(undone, history::StepsKept);
    EXPECT_FALSE(history::canUndo());
    EXPECT_EQ(form->commonList->ListCount(), rowsBefore[10000 - history::StepsKept]);
    expectSlotsSound();
    act([this] { form->Command1_Click(); });
    expectSlotsSound();
    EXPECT_FALSE(history::canRedo());
    EXPECT_EQ(history::undoName(), "Add 1 card");
}

} // namespace
