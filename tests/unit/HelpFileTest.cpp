// The help notes on the real form: the shipped help.dat fits every note in its
// box beside the fields, and notes wrap by the box's own font.

#include "runtime/Runtime.h"
#include "wizard/Globals.h"
#include "wizard/MainForm.h"
#include "app/Program.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class HelpNotes : public ::testing::Test {
protected:
    void SetUp() override {
        rt::setAppPath(dir.path());
        rt::hooks().msgBox = [this](const QString& text, int) { messages << text; };
        form = static_cast<MainForm*>(wizard::startProgram());
    }
    void TearDown() override {
        wizard::stopProgram();
        rt::hooks().msgBox = nullptr;
    }
    void writeHelp(const QByteArray& bytes) {
        QFile f(dir.filePath("help.dat"));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    rt::PictureBox* box(int i) { return form->get<rt::PictureBox>("helpLabel", i); }
    QRect onForm(const rt::Control& c) {
        QWidget* w = c.widget();
        return QRect(w->mapTo(form, QPoint(0, 0)), w->size());
    }
    QTemporaryDir dir;
    QStringList messages;
    MainForm* form = nullptr;
};

} // namespace

TEST_F(HelpNotes, NotesWrapByTheWidthsOfTheBoxFont) {
    const int exact = box(0)->TextWidth("alpha beta");
    writeHelp("[FRAME 0]\nitems=2\n[FRAME 0 ITEM 1]\nwidth=" + QByteArray::number(exact) +
              "\nline1=alpha beta\n[FRAME 0 ITEM 2]\nwidth=" + QByteArray::number(exact) +
              "\nline1=alpha beta gamma\n");
    form->ToggleHelp();
    EXPECT_EQ(box(0)->Printed(), "alpha beta\n");
    EXPECT_EQ(box(1)->Printed().section('\n', 0, 0), "alpha");
    form->ToggleHelp();

    writeHelp("[FRAME 0]\nitems=1\n[FRAME 0 ITEM 1]\nwidth=" + QByteArray::number(exact - 15) +
              "\nline1=alpha beta\n");
    form->ToggleHelp();
    EXPECT_EQ(box(0)->Printed(), "alpha \nbeta");
    EXPECT_TRUE(messages.isEmpty());
    // The note lies in front of the page it explains.
    const QObjectList& order = form->children();
    EXPECT_GT(order.indexOf(box(0)->widget()), order.indexOf(form->Wiz[0]->widget()));
}

TEST_F(HelpNotes, TheShippedNotesFitTheirBoxesAndCoverNoField) {
    QFile shipped(QStringLiteral(ZAVIK_HELP_FILE));
    ASSERT_TRUE(shipped.open(QIODevice::ReadOnly));
    writeHelp(shipped.readAll());
    // Every field a page can show is shown and filled, so that every note comes.
    auto fill = [this] {
        form->NameTXT->setText("Duel");
        form->DirName->setText("cards");
        form->PlNum->setText("6");
        form->NumPLdecks->setText("6");
        form->CommDecksNum->setText("6");
        if (form->commonList->ListCount() == 0)
            form->commonList->AddItem("card.bmp");
        form->UsePropOpt->setValue(1);
        form->repNum->setText("8");
        for (const auto& c : form->controls())
            if (c->baseName() != "helpLabel" && c->baseName() != "Wiz")
                c->setVisible(true);
    };

    const int lineHeight = box(0)->TextHeight("A");
    int shown = 0;
    for (int page : {0, 1, 2, 3, 4, 6}) {
        Globals::PreviousFrame = Globals::CurrentFrame;
        Globals::CurrentFrame = page;
        form->ShowFrame();
        fill();
        messages.clear();
        form->ToggleHelp();
        EXPECT_TRUE(messages.isEmpty()) << "page " << page;
        for (int i = 0; i < 5; ++i) {
            rt::PictureBox* b = box(i);
            if (!b->Visible())
                continue;
            ++shown;
            const std::string where =
                "page " + std::to_string(page) + " note " + std::to_string(i + 1);
            QStringList lines = b->Printed().split('\n');
            while (!lines.isEmpty() && lines.last().isEmpty())
                lines.removeLast();
            EXPECT_FALSE(lines.isEmpty()) << where;
            EXPECT_LE(int(lines.size()) * lineHeight, b->Height()) << where << " runs out below";
            for (const QString& line : lines)
                EXPECT_LE(b->TextWidth(line.trimmed()), b->Width()) << where;
            EXPECT_LE(b->Left() + b->Width(), form->ScaleWidth()) << where;
            EXPECT_LE(b->Top() + b->Height(), form->ScaleHeight()) << where;
            for (const auto& c : form->controls()) {
                if (!c->widget()->isVisibleTo(form) || c->baseName() == "helpLabel" ||
                    c->kind() == rt::Kind::Frame || c->kind() == rt::Kind::CommonDialog)
                    continue;
                EXPECT_FALSE(onForm(*b).intersects(onForm(*c)))
                    << where << " covers " << c->name().toStdString();
            }
        }
        form->ToggleHelp();
    }
    EXPECT_EQ(shown, 18);
}
