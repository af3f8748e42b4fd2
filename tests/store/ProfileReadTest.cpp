#include "StoreTestSupport.h"

#include <random>

using store::ReadProfileValue;

TEST_F(StoreTest, ReadsHandWrittenFileAsWindowsDoes) {
    const QString file = path("odd.game");
    put(file, "; name=before any header\r\n"
              "[ Game ]  \r\n"
              "  Name =  Duel  \r\n"
              "quoted=\"  padded  \"\r\n"
              "single='x'\r\n"
              "lonequote=\"\r\n"
              "mismatched=\"abc'\r\n"
              "novalue\r\n"
              "card1=(x2)a.bmp,,Value=3|Colour=red\r\n"
              "name=second\r\n"
              "   ;indented=comment\r\n"
              "[GAME]\r\n"
              "extra=from the second section\r\n"
              "[Player 1]\r\n"
              "\ttab\t=\tvalue\twith tab\t\r\n"
              "[a]b]\r\n"
              "k=in a]b\r\n"
              "[\xE4rger]\r\n"
              "k=accented\r\n");

    EXPECT_EQ(ReadProfileValue("GAME", "name", file), "Duel");
    EXPECT_EQ(ReadProfileValue("game", "NAME", file), "Duel");
    EXPECT_EQ(ReadProfileValue("  game\t", " name ", file), "Duel");
    EXPECT_EQ(ReadProfileValue("GAME", "quoted", file), "  padded  ");
    EXPECT_EQ(ReadProfileValue("GAME", "single", file), "x");
    EXPECT_EQ(ReadProfileValue("GAME", "lonequote", file), "\"");
    EXPECT_EQ(ReadProfileValue("GAME", "mismatched", file), "\"abc'");
    EXPECT_EQ(ReadProfileValue("GAME", "novalue", file), "");
    EXPECT_EQ(ReadProfileValue("GAME", "card1", file), "(x2)a.bmp,,Value=3|Colour=red");
    EXPECT_EQ(ReadProfileValue("GAME", "; name", file), "") << "the line stands before the header";
    EXPECT_EQ(ReadProfileValue("", "; name", file), "before any header");
    EXPECT_EQ(ReadProfileValue("GAME", ";indented", file), "comment")
        << "a \";\" line is a key like any other";
    EXPECT_EQ(ReadProfileValue("GAME", "extra", file), "") << "only the first GAME section counts";
    EXPECT_EQ(ReadProfileValue("PLAYER 1", "TAB", file), "value\twith tab");
    EXPECT_EQ(ReadProfileValue("a]b", "k", file), "in a]b");
    EXPECT_EQ(ReadProfileValue(QString::fromUtf8("ärger"), "k", file), "accented");
    EXPECT_EQ(ReadProfileValue(QString::fromUtf8("ÄRGER"), "k", file), "")
        << "only ASCII letters fold";

    EXPECT_EQ(ReadProfileValue("GAME", "missing", file), "");
    EXPECT_EQ(ReadProfileValue("NOSECTION", "name", file), "");
    EXPECT_EQ(ReadProfileValue("GAME", "name", path("absent.game")), "");
    EXPECT_EQ(ReadProfileValue("GAME", "name", dir.path()), "")
        << "a folder reads as an empty file";
}

TEST_F(StoreTest, AnyLineEndEndsALine) {
    const QString cr = path("cr.game");
    const QString lf = path("lf.game");
    const QString mixed = path("mixed.game");
    const QString noEnd = path("noend.game");
    put(cr, "[A]\rx=1\ry=2\r");
    put(lf, "[A]\nx=1\ny=2\n");
    put(mixed, "[A]\r\nx=1\n\ry=2\r[B]\nz=3");
    put(noEnd, "[A]\r\nx=1\r\ny=2");
    for (const QString& file : {cr, lf, mixed, noEnd}) {
        EXPECT_EQ(ReadProfileValue("A", "x", file), "1") << file.toStdString();
        EXPECT_EQ(ReadProfileValue("A", "y", file), "2") << file.toStdString();
    }
    EXPECT_EQ(ReadProfileValue("B", "z", mixed), "3");
}

TEST_F(StoreTest, LongValuesNulBytesAndJunkNeverBreakAReader) {
    static const char kNulNames[] = "[s \0x]\r\nk=hidden\r\n[ t\0 ]\r\nk\0 =1\r\n"
                                    "key \0=2\r\n[t]\r\nk=second\r\n";
    const QString file = path("long.game");
    const QByteArray value300(300, 'v');
    const QByteArray huge = QByteArray(3 * 1024 * 1024, 'h');
    put(file, "[D]\r\nlong=" + value300 + "\r\nhuge=" + huge + "\r\nnul=ab" + QByteArray(1, '\0') +
                  "cd\r\nafter=ok\r\n" + QByteArray(kNulNames, sizeof kNulNames - 1));
    EXPECT_EQ(ReadProfileValue("D", "long", file), QString(254, u'v'));
    EXPECT_EQ(ReadProfileValue("D", "huge", file), QString(254, u'h'));
    // In quotes, only a text of exactly 254 loses a letter, as on Windows.
    for (const int n : {253, 254, 255}) {
        put(path("q.game"), "[q]\r\nv=\"" + QByteArray(n, 'q') + "\"\r\n");
        EXPECT_EQ(ReadProfileValue("q", "v", path("q.game")).size(), n == 255 ? 254 : 253) << n;
    }
    EXPECT_EQ(ReadProfileValue("D", "nul", file), "ab");
    EXPECT_EQ(ReadProfileValue("D", "after", file), "ok");
    // A NUL ends a name where it stands, after the blanks around the name are
    // gone: "[s \0x]" names "s " that no lookup of "s" finds, "[ t\0 ]" names "t".
    EXPECT_EQ(ReadProfileValue("s", "k", file), "");
    EXPECT_EQ(ReadProfileValue("t", "k", file), "1");
    EXPECT_EQ(ReadProfileValue("t", "key", file), "");

    // Random bytes, weighted towards the characters the parser cares about.
    std::mt19937 rng(1234);
    const char alphabet[] = "[]=;\"' \t\r\n\0\x80\xFF"
                            "ab";
    QByteArray junk;
    for (int i = 0; i < 100000; ++i)
        junk.append(alphabet[rng() % (sizeof alphabet - 1)]);
    const QString junkFile = path("junk.game");
    put(junkFile, junk);
    for (const char* section : {"", "a", "b", "[", "ab"})
        EXPECT_LE(ReadProfileValue(section, "a", junkFile).size(), 254);
    ASSERT_EQ(save("Fresh", "key", "value", junkFile), 1);
    const QByteArray after = bytesOf(junkFile);
    EXPECT_TRUE(after.startsWith(junk)) << "a write must keep every byte it does not own";
    store::DropProfileCache();
    EXPECT_EQ(ReadProfileValue("Fresh", "key", junkFile), "value");
}

TEST_F(StoreTest, TextCrossesAsWindows1252UnlessTheFileIsUtf8) {
    const QString ansi = path("ansi.game");
    ASSERT_EQ(save("GAME", "name", QString::fromUtf8("€uro café Ω 😀"), ansi), 1);
    EXPECT_EQ(bytesOf(ansi), "[GAME]\r\nname=\x80uro caf\xE9 ? ?\r\n");
    store::DropProfileCache();
    EXPECT_EQ(ReadProfileValue("GAME", "name", ansi), QString::fromUtf8("€uro café ? ?"));

    put(ansi, "[GAME]\r\nq=\x93quoted\x94 \x81\r\n");
    EXPECT_EQ(ReadProfileValue("GAME", "q", ansi), QString::fromUtf8("“quoted” \u0081"));

    const QString utf8 = path("utf8.game");
    put(utf8, "\xEF\xBB\xBF[GAME]\r\nname=caf\xC3\xA9\r\n");
    EXPECT_EQ(ReadProfileValue("GAME", "name", utf8), QString::fromUtf8("café"));
    ASSERT_EQ(save("GAME", "name", QString::fromUtf8("Ω"), utf8), 1);
    EXPECT_EQ(bytesOf(utf8), "\xEF\xBB\xBF[GAME]\r\nname=\xCE\xA9\r\n");
}

TEST_F(StoreTest, BlanksQuotesAndLetterCaseAtTheirEdges) {
    const QString file = path("edges.game");
    put(file, "[s]\r\n"
              "\x0Bk\x0B=\x0Cv\x0C\r\n"
              "\x1A"
              "eof \x1A= ^Z is a blank\x1A\r\n"
              "empty=\"\"\r\n"
              "one=\"\r\n"
              "[ZONE]\r\n"
              "ZIP=z\r\n"
              "AZ[=bracket\r\n");
    EXPECT_EQ(ReadProfileValue("s", "k", file), "v");
    EXPECT_EQ(ReadProfileValue("\x0Cs\x0D", "\x09k\x0A", file), "v");
    EXPECT_EQ(ReadProfileValue("s", "eof", file), "^Z is a blank");
    EXPECT_EQ(ReadProfileValue("s", "empty", file), "") << "two quotes hold nothing";
    EXPECT_EQ(ReadProfileValue("s", "one", file), "\"");
    // "Z" and "z" are the ends of the fold; "[" and "{" lie just beyond them.
    EXPECT_EQ(ReadProfileValue("zone", "zip", file), "z");
    EXPECT_EQ(ReadProfileValue("Zone", "zIP", file), "z");
    EXPECT_EQ(ReadProfileValue("zone", "az[", file), "bracket");
    EXPECT_EQ(ReadProfileValue("zone", "az{", file), "");
}
