// The help notes' word wrap at exact widths and by the box's font, and the shipped help.dat.

#include "ProgramTest.h"

#include "guidance/HelpWrap.h"
#include "runtime/Form.h"
#include "wizard/Catalogue.h"

#include <memory>

using HelpMgmt::WrapHelpText;

namespace {

// Ten units a character, so that widths are exact and easy to read.
double tenEach(const QString& text) {
    return 10.0 * double(text.size());
}

class Wrap : public ::testing::Test {
protected:
    void SetUp() override {
        rt::hooks().msgBox = [this](const QString& text, int style) {
            messages << text;
            styles << style;
        };
    }
    void TearDown() override { rt::hooks().msgBox = nullptr; }
    QStringList wrap(const QString& text, float width) {
        QStringList lines{QStringLiteral("left over")};
        WrapHelpText(text, width, tenEach, lines, nullptr);
        return lines;
    }
    QStringList messages;
    QList<int> styles;
};

TEST_F(Wrap, ALineBreaksWhereItFitsAndAWordTooWideOrAnErrorEndsTheWrap) {
    EXPECT_EQ(wrap("aaa bbb", 70), (QStringList{"aaa bbb", ""}));
    EXPECT_EQ(wrap("aaa bbb", 69), (QStringList{"aaa ", "bbb"}));
    EXPECT_EQ(wrap("aaa bbb ccc", 70), (QStringList{"aaa", "bbb ccc"}));
    EXPECT_EQ(wrap("aaa bbb ccc", 71), (QStringList{"aaa bbb ", "ccc"}));
    EXPECT_EQ(wrap("aa bb cc", 45), (QStringList{"aa", "bb ", "cc"}));
    EXPECT_EQ(wrap("one two three four five six", 100),
              (QStringList{"one two", "three", "four five ", "six"}));
    EXPECT_EQ(wrap("", 50), (QStringList{"", ""}));
    EXPECT_EQ(wrap("aa  bb", 35), (QStringList{"aa  ", "bb"}));
    EXPECT_EQ(wrap(" lead", 100), (QStringList{" lead", ""}));
    // A word alone on a new line is not measured again: it runs past the edge.
    EXPECT_EQ(wrap("a bbbbbbbbbb c", 30), (QStringList{"a", "bbbbbbbbbb ", "c"}));
    EXPECT_EQ(wrap("a bbbbbbbbbb ccc dd", 30), (QStringList{"a", "bbbbbbbbbb", "ccc ", "dd"}));
    EXPECT_TRUE(messages.isEmpty());

    EXPECT_EQ(wrap("abcdefgh ij", 50), (QStringList{"", ""}));
    EXPECT_EQ(wrap("abcdefgh", 50), (QStringList{"", ""}));
    EXPECT_EQ(wrap("abcde fg", 50), (QStringList{"", ""}));
    EXPECT_EQ(wrap("abcde", 50), (QStringList{"abcde", ""}));
    EXPECT_EQ(messages, QStringList(3, "Box Too Small For Words"));
    EXPECT_EQ(styles, (QList<int>{0, 0, 0}));

    messages.clear();
    std::unique_ptr<rt::Form> form(new rt::Form(wizard::mainFormSpec()));
    rt::PictureBox* box = form->get<rt::PictureBox>("helpLabel", 0);
    box->setVisible(true);
    int calls = 0;
    auto failing = [&calls](int number, const char* text) {
        return [&calls, number, text](const QString& piece) -> double {
            if (++calls == 2)
                throw HelpMgmt::RuntimeError{number, QString::fromLatin1(text)};
            return tenEach(piece);
        };
    };
    QStringList lines;
    WrapHelpText("aa bb cc", 100, failing(5, "Invalid procedure call or argument"), lines, box);
    EXPECT_EQ(lines, (QStringList{"aa", ""}));
    EXPECT_EQ(messages, QStringList{" 5Invalid procedure call or argument"});
    EXPECT_FALSE(box->Visible());

    calls = 0;
    messages.clear();
    box->setVisible(true);
    WrapHelpText("aa bb cc", 100, failing(6, "Overflow"), lines, box);
    EXPECT_EQ(messages, QStringList{"6"});
    EXPECT_TRUE(box->Visible());
}

class HelpNotes : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        start();
    }
    rt::PictureBox* box(int i) { return form->get<rt::PictureBox>("helpLabel", i); }
    QRect onForm(const rt::Control& c) {
        return QRect(c.widget()->mapTo(form, QPoint(0, 0)), c.widget()->size());
    }
};

TEST_F(HelpNotes, NotesWrapByTheBoxFontAndTheShippedOnesFitTheirBoxesAndCoverNoField) {
    const QByteArray exact = QByteArray::number(box(0)->TextWidth("alpha beta"));
    file("help.dat", "[FRAME 0]\nitems=2\n[FRAME 0 ITEM 1]\nwidth=" + exact +
                         "\nline1=alpha beta\n[FRAME 0 ITEM 2]\nwidth=" + exact +
                         "\nline1=alpha beta gamma\n");
    form->ToggleHelp();
    EXPECT_EQ(box(0)->Printed(), "alpha beta\n");
    EXPECT_EQ(box(1)->Printed().section('\n', 0, 0), "alpha");
    form->ToggleHelp();

    file("help.dat", "[FRAME 0]\nitems=1\n[FRAME 0 ITEM 1]\nwidth=" +
                         QByteArray::number(exact.toInt() - 15) + "\nline1=alpha beta\n");
    form->ToggleHelp();
    EXPECT_EQ(box(0)->Printed(), "alpha \nbeta");
    EXPECT_TRUE(messages.isEmpty());
    // The note lies in front of the page it explains.
    const QObjectList& order = form->client()->children();
    EXPECT_GT(order.indexOf(box(0)->widget()), order.indexOf(form->Wiz[0]->widget()));
    form->ToggleHelp();

    QFile shipped(QStringLiteral(ZAVIK_HELP_FILE));
    ASSERT_TRUE(shipped.open(QIODevice::ReadOnly));
    file("help.dat", shipped.readAll());
    const int lineHeight = box(0)->TextHeight("A");
    int shown = 0;
    for (int page : {0, 1, 2, 3, 4, 6, 7}) {
        Globals::PreviousFrame = Globals::CurrentFrame;
        Globals::CurrentFrame = page;
        form->ShowFrame();
        // Every field a page can show is shown and filled, so that every note comes.
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
        messages.clear();
        form->ToggleHelp();
        EXPECT_TRUE(messages.isEmpty()) << "page " << page;
        for (int i = 0; i < 5; ++i) {
            rt::PictureBox* b = box(i);
            QStringList lines = b->Printed().split('\n');
            while (!lines.isEmpty() && lines.last().isEmpty())
                lines.removeLast();
            if (!b->Visible())
                continue;
            ++shown;
            const std::string where = "page " + std::to_string(page) + " note " + std::to_string(i);
            EXPECT_FALSE(lines.isEmpty()) << where;
            EXPECT_LE(int(lines.size()) * lineHeight, b->Height()) << where << " runs out below";
            for (const QString& line : lines)
                EXPECT_LE(b->TextWidth(line.trimmed()), b->Width()) << where;
            EXPECT_LE(b->Left() + b->Width(), form->ScaleWidth()) << where;
            EXPECT_LE(b->Top() + b->Height(), form->ScaleHeight()) << where;
            for (const auto& c : form->controls())
                EXPECT_TRUE(!c->widget()->isVisibleTo(form) || c->baseName() == "helpLabel" ||
                            c->kind() == rt::Kind::Frame || c->kind() == rt::Kind::CommonDialog ||
                            !onForm(*b).intersects(onForm(*c)))
                    << where << " covers " << c->name();
        }
        form->ToggleHelp();
    }
    EXPECT_EQ(shown, 27);
}

} // namespace
