#include "game/Conversions.h"

#include <gtest/gtest.h>

#include <limits>

using conv::CInt;
using conv::GetField;
using conv::Trim;
using conv::UCase;
using conv::Val;

TEST(TextHelpers, TextAndNumbersConvertAsTheWindowsFunctionsDo) {
    struct Row {
        const char* text;
        qint16 n;
        const char* field;
    };
    const Row rows[] = {{"a,b", 1, "a"},  {"a,b", 2, "b"},   {"a,b", 3, ""}, {"a,,c", 2, ""},
                        {"a,,c", 3, "c"}, {"a,b,", 3, ""},   {"", 1, ""},    {"a,b", 0, ""},
                        {"a,b", -4, ""},  {"a,b", 32767, ""}};
    for (const Row& row : rows)
        EXPECT_EQ(GetField(row.text, row.n), row.field) << row.text << " field " << row.n;

    const QString card = "(x4)knight.bmp,,Value=3|Colour=red";
    EXPECT_EQ(GetField(card, 1), "(x4)knight.bmp");
    EXPECT_EQ(GetField(card, 3), "Value=3|Colour=red");
    EXPECT_EQ(GetField(GetField(GetField(card, 3), 2, "|"), 2, "="), "red");
    // Past the end of a two-character delimiter is empty unless the text ends in part of it.
    EXPECT_EQ(GetField("a,,b", 2, ",,"), "b");
    EXPECT_EQ(GetField("a,", 2, ",,"), ",");
    EXPECT_EQ(GetField("a,,b", 3, ",,"), "");

    QString delim;
    EXPECT_EQ(GetField("x,y", 2, delim), "y");
    EXPECT_EQ(delim, ",") << "an empty delimiter becomes a comma for the caller too";

    // Only '.' is a decimal point.
    const std::pair<const char*, double> vals[] = {
        {"12) ", 12.0}, {"3.7", 3.7}, {"-2.5x", -2.5}, {"+.5", 0.5}, {"  42", 42.0},
        {"1,5", 1.0},   {"abc", 0.0}, {"", 0.0},       {"-", 0.0},   {".", 0.0}};
    for (const auto& [text, value] : vals)
        EXPECT_DOUBLE_EQ(Val(text), value) << text;
    EXPECT_GT(Val(QString(400, u'9')), 1e300);

    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const std::pair<double, int> ints[] = {
        {0.5, 0},       {1.5, 2},         {2.5, 2},         {3.5, 4},     {-2.5, -2},
        {2.51, 3},      {32767.4, 32767}, {32767.5, 32767}, {1e9, 32767}, {-32768.5, -32768},
        {-1e9, -32768}, {inf, 32767},     {nan, 0}};
    for (const auto& [number, rounded] : ints)
        EXPECT_EQ(CInt(number), rounded) << number;
    EXPECT_EQ(CInt(Val("2.5")), 2);
    EXPECT_EQ(CInt(Val("3.5")), 4);
    EXPECT_EQ(CInt(Val("")), 0);

    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\t a \t"), "\t a \t");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(UCase(QString::fromUtf8("true Fälse")), QString::fromUtf8("TRUE FÄLSE"));
}
