// Page 4 through the real widgets: clicks in File1 and the card list, Enter, the viewers.

#include "ProgramTest.h"

#include "decks/ShowCrdForm.h"

namespace {

class DeckPage : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        image("cards/a.bmp", 20, 30);
        image("cards/b.bmp", 40, 10);
        image("cards/c.jpg", 8, 8);
        file("Duel.game", "[GAME]\r\ndirectory=cards\r\ncommon_decks=1\r\n[COMMON 1]\r\n"
                          "decksize=2\r\ncard1=(x2)a.bmp\r\ncard2=b.bmp\r\n");
        show();
        form->NameTXT->setText("Duel");
        form->LoadGameData();
        form->ShowCommonDeck_Click(0);
        ASSERT_EQ(form->File1->ListCount(), 3);
    }
};

TEST_F(DeckPage, ClicksInFile1ToggleImagesAndADoubleClickInTheCardListOpensTheDialog) {
    clickRow(form->File1, 2);
    clickRow(form->File1, 0);
    EXPECT_TRUE(form->File1->Selected(0));
    EXPECT_FALSE(form->File1->Selected(1));
    EXPECT_TRUE(form->File1->Selected(2));
    clickRow(form->File1, 2);
    EXPECT_FALSE(form->File1->Selected(2)) << "a second click must take the image out again";

    click(form->Command1);
    ASSERT_EQ(form->commonList->ListCount(), 3);
    EXPECT_EQ(form->commonList->List(2), "a.bmp");
    EXPECT_EQ(form->commonList->ItemData(2), 3);
    EXPECT_EQ(form->commLabel->Caption(), "Cards: 3 (tot: 4)");

    form->commonList->setList(1, "(x5)b.bmp");
    doubleClickRow(form->commonList, 1);
    rt::Form* dialog = rt::loadedForm("CardDetailForm");
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_FALSE(dialog->isModal());
    EXPECT_EQ(form->commonList->ListIndex(), 1);
    EXPECT_EQ(form->commLabel->Caption(), "Cards: 3 (tot: 8)");
}

TEST_F(DeckPage, EnterAndFile1WaitForTheirFormsAndTheDialogsViewerIsReused) {
    form->commonList->setListIndex(0);
    bool modal = false;
    whileModal([&] {
        if (rt::Form* dialog = rt::loadedForm("CardDetailForm")) {
            modal = dialog->isModal() && dialog->isVisible();
            dialog->close();
        }
    });
    press(form->commonList, Qt::Key_Return);
    EXPECT_TRUE(modal);
    EXPECT_EQ(rt::loadedForm("CardDetailForm"), nullptr);

    press(form->commonList, Qt::Key_A);
    EXPECT_EQ(rt::loadedForm("CardDetailForm"), nullptr);

    modal = false;
    int width = 0;
    whileModal([&] {
        if (auto* viewer = rt::loaded<ShowCrdForm>()) {
            modal = viewer->isModal() && viewer->isVisible();
            width = viewer->Width();
            QTest::keyClick(viewer, Qt::Key_Space);
        }
    });
    doubleClickRow(form->File1, 1);
    EXPECT_TRUE(modal);
    EXPECT_EQ(width, 40 * 15 + 80);
    EXPECT_EQ(rt::loaded<ShowCrdForm>(), nullptr) << "any key closes the viewer";

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

    // A double click in File1 while it is up takes it over rather than waiting on it.
    form->File1->setListIndex(2);
    form->File1_DblClick();
    EXPECT_EQ(rt::loaded<ShowCrdForm>(), viewer);
    EXPECT_EQ(viewer->Width(), 8 * 15 + 80);

    showCardImage("missing.bmp", false);
    EXPECT_EQ(messages, QStringList{"Cannot open image cards/missing.bmp"});
    EXPECT_EQ(rt::loaded<ShowCrdForm>(), viewer) << "the open viewer is left as it was";
    EXPECT_EQ(viewer->Width(), 8 * 15 + 80);
}

} // namespace
