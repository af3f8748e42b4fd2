#include "game/Conversions.h"

#include <gtest/gtest.h>

#include <limits>

using conv::Val;
using conv::CInt;
using conv::Trim;
using conv::UCase;
using conv::GetField;

TEST(TextHelpers, GetFieldSplitsAsTheTableSays) {
    struct Row {
        const char* text;
        qint16 n;
        const char* field;
    };
    for (const Row& row : {Row{"a,b", 1, "a"}, Row{"a,b", 2, "b"}, Row{"a,b", 3, ""},
                           Row{"a,,c", 2, ""}, Row{"a,,c", 3, "c"}, Row{"a,b,", 3, ""},
                           Row{"", 1, ""}, Row{"a,b", 0, ""}, Row{"a,b", -4, ""}})
        EXPECT_EQ(GetField(row.text, row.n), row.field) << row.text << " field " << row.n;

    const QString card = "(x4)knight.bmp,,Value=3|Colour=red";
    EXPECT_EQ(GetField(card, 1), "(x4)knight.bmp");
    EXPECT_EQ(GetField(card, 3), "Value=3|Colour=red");
    EXPECT_EQ(GetField(GetField(GetField(card, 3), 2, "|"), 2, "="), "red");
    EXPECT_EQ(GetField("a,b", 32767), "");

    // A two-character delimiter: past the end is empty unless the text ends
    // in a part of it.
    EXPECT_EQ(GetField("a,,b", 2, ",,"), "b");
    EXPECT_EQ(GetField("a,", 2, ",,"), ",");
    EXPECT_EQ(GetField("a,,b", 3, ",,"), "");

    QString delim;
    EXPECT_EQ(GetField("x,y", 2, delim), "y");
    EXPECT_EQ(delim, ",") << "an empty delimiter becomes a comma for the caller too";
}

TEST(TextHelpers, ValReadsTheLeadingNumber) {
    EXPECT_EQ(Val("12) "), 12.0);
    EXPECT_DOUBLE_EQ(Val("3.7"), 3.7);
    EXPECT_DOUBLE_EQ(Val("-2.5x"), -2.5);
    EXPECT_DOUBLE_EQ(Val("+.5"), 0.5);
    EXPECT_EQ(Val("  42"), 42.0);
    EXPECT_EQ(Val("1,5"), 1.0) << "only '.' is a decimal point";
    EXPECT_EQ(Val("abc"), 0.0);
    EXPECT_EQ(Val(""), 0.0);
    EXPECT_EQ(Val("-"), 0.0);
    EXPECT_EQ(Val("."), 0.0);
    EXPECT_GT(Val(QString(400, u'9')), 1e300);
}

TEST(TextHelpers, CIntRoundsHalvesToEvenAndSaturates) {
    EXPECT_EQ(CInt(0.5), 0);
    EXPECT_EQ(CInt(1.5), 2);
    EXPECT_EQ(CInt(2.5), 2);
    EXPECT_EQ(CInt(3.5), 4);
    EXPECT_EQ(CInt(-2.5), -2);
    EXPECT_EQ(CInt(2.51), 3);
    EXPECT_EQ(CInt(Val("2.5")), 2);
    EXPECT_EQ(CInt(Val("3.5")), 4);
    EXPECT_EQ(CInt(Val("")), 0);
    EXPECT_EQ(CInt(32767.4), 32767);
    EXPECT_EQ(CInt(32767.5), 32767);
    EXPECT_EQ(CInt(1e9), 32767);
    EXPECT_EQ(CInt(-32768.5), -32768);
    EXPECT_EQ(CInt(-1e9), -32768);
    EXPECT_EQ(CInt(std::numeric_limits<double>::infinity()), 32767);
    EXPECT_EQ(CInt(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(TextHelpers, TrimTakesSpacesOnlyAndUCaseCapitalises) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\t a \t"), "\t a \t");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(UCase(QString::fromUtf8("true Fälse")), QString::fromUtf8("TRUE FÄLSE"));
}
