#include "sheet/PropertyText.h"

#include <gtest/gtest.h>

using namespace sheet;

TEST(PropertyText, ValueOfReadsAsTheFileReadersDo) {
    struct Case {
        const char* props;
        const char* name;
        const char* value;
    };
    const Case cases[] = {
        {"Value=3|Colour=red", "Colour", "red"},
        {"Value=3|Value=4", "Value", "4"},        // the later pair wins
        {"a=1|b=2|c=3|d=4|e=5|f=6|g=7", "g", ""}, // a seventh pair is never read
        {"Value=3", "value", ""},                 // names compare exactly
        {"Value=3=4", "Value", "3"},
        {"", "Value", ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(valueOf(QString::fromUtf8(c.props), QString::fromUtf8(c.name)),
                  QString::fromUtf8(c.value))
            << c.props << " / " << c.name;
}

TEST(PropertyText, RefusalsNameTheCharacterAndWhy) {
    EXPECT_EQ(valueRefusal(QStringLiteral("a,b")),
              QStringLiteral("The value \"a,b\" holds \",\", which ends a card's line in the game "
                             "file"));
    EXPECT_TRUE(valueRefusal(QStringLiteral("a|b")).contains(QStringLiteral("separates a card's")));
    EXPECT_TRUE(valueRefusal(QStringLiteral("a=b")).contains(QStringLiteral("from its value")));
    EXPECT_TRUE(valueRefusal(QStringLiteral("a\nb")).contains(QStringLiteral("line break")));
    EXPECT_TRUE(valueRefusal(QStringLiteral("snow \u2603")).contains(QStringLiteral("U+2603")));
    EXPECT_TRUE(valueRefusal(QString::fromUtf8("\xF0\x9F\x82\xA1")).contains("U+1F0A1"));
    EXPECT_EQ(valueRefusal(QString::fromUtf8("caf\xC3\xA9 \xE2\x82\xAC 5")), QString());
    EXPECT_TRUE(nameRefusal(QStringLiteral("a=b")).contains(QStringLiteral("\"=\"")));
    EXPECT_FALSE(nameRefusal(QString()).isEmpty());
    EXPECT_EQ(imageRefusal(QStringLiteral("a|b=c.bmp")), QString());
    EXPECT_FALSE(imageRefusal(QStringLiteral("a,b.bmp")).isEmpty());
    EXPECT_TRUE(imageRefusal(QStringLiteral("dir\\x.bmp")).contains(QStringLiteral("folder")));
}

TEST(PropertyText, SetValuesPutsColumnsFirstAndKeepsOtherPairs) {
    const QStringList columns{QStringLiteral("Value"), QStringLiteral("Colour"),
                              QStringLiteral("Rank")};
    struct Case {
        const char* props;
        QHash<QString, QString> values;
        bool ok;
        const char* result;
    };
    const Case cases[] = {
        {"", {{"Colour", " red "}}, true, "Colour=red"},
        {"Colour=red|Value=3", {{"Rank", "A"}}, true, "Value=3|Colour=red|Rank=A"},
        {"Other=x|Value=3", {{"Value", ""}}, true, "Other=x"},
        {"Value=3|Value=4", {{"Colour", "b"}}, true, "Value=4|Colour=b"},
        {"o1=1|o2=2|o3=3|o4=4|Value=3",
         {{"Colour", "b"}},
         true,
         "Value=3|Colour=b|o1=1|o2=2|o3=3|o4=4"},
        {"o1=1|o2=2|o3=3|o4=4|Value=3", {{"Colour", "b"}, {"Rank", "c"}}, false, ""},
        {"Value=3", {{"Colour", "a|b"}}, false, ""},
        {"x=a=b|Value=3", {{"Value", "4"}}, true, "Value=4|x=a=b"},
    };
    for (const Case& c : cases) {
        const PropsEdit edit = setValues(QString::fromUtf8(c.props), columns, c.values);
        EXPECT_EQ(edit.ok, c.ok) << c.props << ": " << edit.message;
        if (c.ok)
            EXPECT_EQ(edit.props, QString::fromUtf8(c.result)) << c.props;
        else
            EXPECT_FALSE(edit.message.isEmpty());
    }
    EXPECT_TRUE(setValues(QStringLiteral("o1=1|o2=2|o3=3|o4=4|Value=3"), columns,
                          {{"Colour", "b"}, {"Rank", "c"}})
                    .message.startsWith(QStringLiteral("A card holds at most six properties; ")));
}

TEST(PropertyText, EntryWithCopiesFollowsTheDialog) {
    const char* cases[][3] = {
        {"knight.bmp", "3", "(x3)knight.bmp"},       {"(x4)knight.bmp", "1", "knight.bmp"},
        {"(x4)knight.bmp", " 2 ", "(x2)knight.bmp"}, {"(x2) knight.bmp", "0", "knight.bmp"},
        {"(xknight.bmp", "2", "(x2)(xknight.bmp"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(entryWithCopies(QString::fromUtf8(c[0]), QString::fromUtf8(c[1])),
                  QString::fromUtf8(c[2]));
}
