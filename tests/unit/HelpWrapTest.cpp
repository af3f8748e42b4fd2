// The word wrap of the help notes: where a line breaks at exact widths, the
// message for a word that does not fit, and the run time's errors inside it.

#include "guidance/HelpWrap.h"
#include "runtime/Controls.h"
#include "runtime/Form.h"
#include "runtime/Runtime.h"
#include "wizard/Catalogue.h"

#include <gtest/gtest.h>
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

} // namespace

TEST_F(Wrap, InsideTheTextAFullLineBreaksAtItsEndItFits) {
    EXPECT_EQ(wrap("aaa bbb", 70), (QStringList{"aaa bbb", ""}));
    EXPECT_EQ(wrap("aaa bbb", 69), (QStringList{"aaa ", "bbb"}));
    EXPECT_EQ(wrap("aaa bbb ccc", 70), (QStringList{"aaa", "bbb ccc"}));
    EXPECT_EQ(wrap("aaa bbb ccc", 71), (QStringList{"aaa bbb ", "ccc"}));
    EXPECT_EQ(wrap("aa bb cc", 45), (QStringList{"aa", "bb ", "cc"}));
    EXPECT_EQ(wrap("one two three four five six", 100),
              (QStringList{"one two", "three", "four five ", "six"}));
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(Wrap, EmptyWordsAndLoneWideWordsTakeNoMessage) {
    EXPECT_EQ(wrap("", 50), (QStringList{"", ""}));
    EXPECT_EQ(wrap("aa  bb", 35), (QStringList{"aa  ", "bb"}));
    EXPECT_EQ(wrap(" lead", 100), (QStringList{" lead", ""}));
    // A word alone on a new line is not measured again: it runs past the edge.
    EXPECT_EQ(wrap("a bbbbbbbbbb c", 30), (QStringList{"a", "bbbbbbbbbb ", "c"}));
    EXPECT_EQ(wrap("a bbbbbbbbbb ccc dd", 30), (QStringList{"a", "bbbbbbbbbb", "ccc ", "dd"}));
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(Wrap, AFirstWordThatDoesNotFitLeavesTwoEmptyLines) {
    EXPECT_EQ(wrap("abcdefgh ij", 50), (QStringList{"", ""}));
    EXPECT_EQ(wrap("abcdefgh", 50), (QStringList{"", ""}));
    EXPECT_EQ(wrap("abcde fg", 50), (QStringList{"", ""}));
    EXPECT_EQ(wrap("abcde", 50), (QStringList{"abcde", ""}));
    EXPECT_EQ(messages, (QStringList{"Box Too Small For Words", "Box Too Small For Words",
                                     "Box Too Small For Words"}));
    EXPECT_EQ(styles, (QList<int>{0, 0, 0}));
}

TEST_F(Wrap, ARunTimeErrorEndsTheWrapAndKeepsWhatItHolds) {
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
