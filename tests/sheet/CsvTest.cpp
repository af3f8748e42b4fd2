#include "sheet/Csv.h"

#include <QElapsedTimer>
#include <QStringEncoder>

#include <gtest/gtest.h>

using namespace sheet;

namespace {

QByteArray utf16(const QString& text, QStringConverter::Encoding e, bool bom) {
    QStringEncoder enc(e, bom ? QStringConverter::Flag::WriteBom : QStringConverter::Flag::Default);
    return enc(text);
}

} // namespace

TEST(Csv, EncodingsAndSeparators) {
    const QString text = QString::fromUtf8("image\tcopies\nk\xC3\xA9.bmp\t2\n");
    struct Case {
        QByteArray bytes;
        const char* encoding;
        char separator;
    };
    const Case cases[] = {
        {text.toUtf8(), "UTF-8", '\t'},
        {"\xEF\xBB\xBF" + text.toUtf8(), "UTF-8 with BOM", '\t'},
        {utf16(text, QStringConverter::Utf16LE, true), "UTF-16LE", '\t'},
        {utf16(text, QStringConverter::Utf16BE, true), "UTF-16BE", '\t'},
        {utf16(text, QStringConverter::Utf16LE, false), "UTF-16LE", '\t'},
        {utf16(text, QStringConverter::Utf16BE, false), "UTF-16BE", '\t'},
        {"image\tcopies\nk\xE9.bmp\t2\n", "Windows-1252", '\t'},
        {"image;copies\nk\xC3\xA9.bmp;2\n", "UTF-8", ';'},
        {"image,copies\nk\xC3\xA9.bmp,2\n", "UTF-8", ','},
    };
    for (const Case& c : cases) {
        const CsvRead r = readCsv(c.bytes);
        ASSERT_TRUE(r.ok) << c.encoding << ": " << r.error;
        EXPECT_EQ(r.encoding, QLatin1String(c.encoding));
        EXPECT_EQ(r.separator, QLatin1Char(c.separator)) << c.encoding;
        EXPECT_EQ(r.table.header, QStringList({"image", "copies"})) << c.encoding;
        ASSERT_EQ(r.table.rows.size(), 1u) << c.encoding;
        EXPECT_EQ(r.table.rows[0], QStringList({QString::fromUtf8("k\xC3\xA9.bmp"), "2"}));
    }
    // Ties go to TAB, then ";"; separators inside quotes do not count.
    EXPECT_EQ(readCsv("a;b,c\n").separator, QLatin1Char(';'));
    EXPECT_EQ(readCsv("a\tb;c\n").separator, QLatin1Char('\t'));
    EXPECT_EQ(readCsv("\"a;b;c\",d\n").separator, QLatin1Char(','));
}

TEST(Csv, QuotingAndLines) {
    const CsvRead r = readCsv("image,note\r\n\"a.bmp\",\"say \"\"hi\"\"\"\r\n"
                              "b.bmp,\"two\r\nlines\"\r\rc.bmp,\"\"\r\n\r\n\r\n");
    ASSERT_TRUE(r.ok) << r.error;
    ASSERT_EQ(r.table.rows.size(), 3u);
    EXPECT_EQ(r.table.rows[0], QStringList({"a.bmp", "say \"hi\""}));
    EXPECT_EQ(r.table.rows[1], QStringList({"b.bmp", "two\r\nlines"}));
    EXPECT_EQ(r.table.rows[2], QStringList({"c.bmp", ""}));
    EXPECT_EQ(r.table.lines, std::vector<int>({2, 3, 6})); // line 5 is blank (CR alone)
    const CsvRead headerOnly = readCsv("image,copies\n\n\n");
    EXPECT_TRUE(headerOnly.ok);
    EXPECT_TRUE(headerOnly.table.rows.empty());
}

TEST(Csv, BadInputIsRefusedQuicklyWithAReason) {
    struct Case {
        QByteArray bytes;
        const char* says;
    };
    const QByteArray hugeCell = "image\n\"" + QByteArray(5 * 1024 * 1024, 'x') + "\"\n";
    QByteArray manyRows = "image\n";
    for (int i = 0; i < 100000; ++i)
        manyRows += "a.bmp\n";
    const Case cases[] = {
        {"", "empty"},
        {QByteArray("ima\0ge\n", 7), "NUL"},
        {"image\nab\x01.bmp\n", "line 2 holds the control character 0x01"},
        {QByteArray("\xFF\xFEi\0m\0a", 7), "odd number of bytes"},
        {"image\na.bmp\n\"b.bmp\nc.bmp\n", "opens a cell on line 3 is never closed"},
        {hugeCell, "longer than 65536 characters"},
        {manyRows, "more than 10000 rows"},
        {QByteArray(MaxCsvBytes + 1, 'a'), "at most"},
    };
    for (const Case& c : cases) {
        QElapsedTimer timer;
        timer.start();
        const CsvRead r = readCsv(c.bytes);
        EXPECT_LT(timer.elapsed(), 2000) << c.says;
        EXPECT_FALSE(r.ok) << c.says;
        EXPECT_TRUE(r.error.contains(QLatin1String(c.says))) << r.error;
        EXPECT_TRUE(r.table.rows.empty());
    }
}

TEST(Csv, WrittenCellsReadBackAndStaySafeInSpreadsheets) {
    const QStringList header{"image", "note"};
    const std::vector<QStringList> rows{
        {"a.bmp", "=SUM(A1)"}, {"b.bmp", " lead"}, {"c.bmp", "x;y"}, {"d.bmp", "q\"uote\r\nx"},
        {"e.bmp", "-3"},       {"f.bmp", "plain"}, {"g.bmp", ""},
    };
    const QByteArray bytes = writeCsv(header, rows);
    EXPECT_TRUE(
        bytes.startsWith("\xEF\xBB\xBFimage,note\r\na.bmp,'=SUM(A1)\r\nb.bmp,\" lead\"\r\n"));
    const CsvRead r = readCsv(bytes);
    ASSERT_TRUE(r.ok) << r.error;
    ASSERT_EQ(r.table.rows.size(), rows.size());
    EXPECT_EQ(r.table.rows[0][1], QStringLiteral("'=SUM(A1)")); // the reader keeps the escape
    EXPECT_EQ(r.table.rows[4][1], QStringLiteral("'-3"));
    for (std::size_t i : {1u, 2u, 3u, 5u, 6u})
        EXPECT_EQ(r.table.rows[i], rows[i]);
}
