// The two forms that show what will happen before it does, driven by the
// mouse and the keyboard: the import of a spreadsheet and the unpacking of a
// game.

#include "ProgramTest.h"

#include "deckview/DeckView.h"
#include "deckview/ImportPreviewForm.h"
#include "desktop/Desktop.h"
#include "desktop/UnpackForm.h"
#include "pack/Pack.h"

namespace {

class PreviewForms : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        image("cards/a.bmp", 20, 30);
        image("cards/b.bmp", 20, 30);
        file("Duel.game", "[GAME]\r\ndirectory=cards\r\ncommon_decks=1\r\n[COMMON 1]\r\n"
                          "decksize=2\r\ncard1=a.bmp\r\ncard2=b.bmp\r\n[PROP LISTS]\r\n"
                          "total=1\r\nlist1=Figures,Value\r\n");
        show();
        form->NameTXT->setText("Duel");
        form->LoadGameData();
    }
    template <class F> static F* up() {
        F* f = rt::loaded<F>();
        EXPECT_NE(f, nullptr);
        return f;
    }
};

TEST_F(PreviewForms, TheImportIsPreviewedThenAppliedByTheMouse) {
    form->ShowCommonDeck_Click(0);
    const QString csv = file("in.csv", "image,Value\r\na.bmp,7\r\n");
    rt::hooks().showOpen = [&](const QString&) { return csv; };
    QString before, after;
    whileModal([&] {
        auto* preview = up<deckview::ImportPreviewForm>();
        if (!preview)
            return;
        before = preview->summary->Caption();
        click(preview->RemoveMissing); // b.bmp is named nowhere in the file
        after = preview->summary->Caption();
        click(preview->ApplyBtn);
    });
    deckview::importCards();
    EXPECT_EQ(before, "0 added, 1 changed, 0 unchanged, 0 removed, 0 refused");
    EXPECT_EQ(after, "0 added, 1 changed, 0 unchanged, 1 removed, 0 refused");
    ASSERT_EQ(form->commonList->ListCount(), 1);
    EXPECT_EQ(Globals::cardProp(1), "Value=7");
    EXPECT_EQ(rt::loaded<deckview::ImportPreviewForm>(), nullptr);
}

TEST_F(PreviewForms, EscLeavesTheFolderAsItWasAndAClickUnpacksAndOpensTheGame) {
    QTemporaryDir elsewhere;
    QDir().mkpath(elsewhere.filePath("othercards"));
    QImage picture(10, 10, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(elsewhere.filePath("othercards/x.bmp")));
    QFile game(elsewhere.filePath("Other.game"));
    ASSERT_TRUE(game.open(QIODevice::WriteOnly));
    game.write("[GAME]\r\ndirectory=othercards\r\ncommon_decks=1\r\n[COMMON 1]\r\ndecksize=1\r\n"
               "img_back=x.bmp\r\nimg_discard=x.bmp\r\ncard1=x.bmp\r\n");
    game.close();
    const QString zip = elsewhere.filePath("Other.game.zip");
    ASSERT_TRUE(pack::packGame(elsewhere.filePath("Other.game"), zip, false).ok);
    rt::hooks().showOpen = [&](const QString&) { return zip; };
    // A question (edits not saved, files that differ) takes its first answer.
    rt::hooks().ask = [](const QString&, const QStringList& buttons) { return buttons.first(); };

    QString summary;
    whileModal([&] {
        auto* confirm = up<UnpackForm>();
        if (!confirm)
            return;
        summary = confirm->SummaryLbl->Caption();
        QTest::keyClick(confirm->FilesList->widget(), Qt::Key_Escape);
    });
    desktop::unpackGame();
    EXPECT_TRUE(summary.contains("Other")) << summary.toStdString();
    EXPECT_FALSE(QFileInfo::exists(dir.filePath("Other.game")));
    EXPECT_FALSE(QFileInfo::exists(dir.filePath("othercards")));

    bool checked = false;
    whileModal([&] {
        auto* confirm = up<UnpackForm>();
        if (!confirm)
            return;
        click(confirm->UnpackBtn);
    });
    // The game opens and its check comes up, modal in its turn, once the
    // unpack form's wait is over.
    int looks = 0;
    std::function<void()> closeCheck = [&] {
        if (rt::Form* check = rt::loadedForm("GameCheckForm")) {
            checked = true;
            check->close();
        } else if (++looks < 500) {
            QTimer::singleShot(10, closeCheck);
        }
    };
    QTimer::singleShot(10, closeCheck);
    desktop::unpackGame();
    QFile packed(elsewhere.filePath("Other.game"));
    ASSERT_TRUE(packed.open(QIODevice::ReadOnly));
    EXPECT_EQ(read("Other.game"), packed.readAll());
    EXPECT_TRUE(QFileInfo::exists(dir.filePath("othercards/x.bmp")));
    EXPECT_TRUE(checked) << "the unpacked game's check shows";
    ASSERT_NE(mainForm(), nullptr);
    EXPECT_EQ(mainForm()->NameTXT->Text(), "Other");
}

} // namespace
