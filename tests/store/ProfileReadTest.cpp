// Reading as Windows reads: blanks, quotes, letter case, line ends, long values and odd bytes.

#include "StoreTestSupport.h"

#include <random>

namespace {

struct Lookup {
    const char* section;
    const char* key;
    const char* value;
};

} // namespace

TEST_F(StoreTest, ReadsAsWindowsDoesWhateverTheLineEndsLengthsOrBytes) {
    const QString file = path("odd.game");
    put(file, "; name=before any header\r\n[ Game ]  \r\n  Name =  Duel  \r\n"
              "quoted=\"  padded  \"\r\nsingle='x'\r\nlonequote=\"\r\nmismatched=\"abc'\r\n"
              "novalue\r\ncard1=(x2)a.bmp,,Value=3|Colour=red\r\nname=second\r\n"
              "   ;indented=comment\r\n[GAME]\r\nextra=from the second section\r\n"
              "[Player 1]\r\n\ttab\t=\tvalue\twith tab\t\r\n[a]b]\r\nk=in a]b\r\n"
              "[\xE4rger]\r\nk=accented\r\n[s]\r\n\x0Bk\x0B=\x0Cv\x0C\r\n\x1A"
              "eof \x1A= ^Z is a blank\x1A\r\nempty=\"\"\r\n[ZONE]\r\nZIP=z\r\nAZ[=bracket\r\n");
    // Only the first GAME section counts; a ";" line is a key like any other,
    // and the line before the header stands in the section "". "Z" and "z" are
    // the ends of the letter fold; "[" and "{" lie just beyond them.
    // clang-format off
    const Lookup rows[] = {
        {"GAME", "name", "Duel"}, {"game", "NAME", "Duel"}, {"  game\t", " name ", "Duel"},
        {"GAME", "quoted", "  padded  "}, {"GAME", "single", "x"}, {"GAME", "lonequote", "\""},
        {"GAME", "mismatched", "\"abc'"}, {"GAME", "novalue", ""}, {"GAME", "; name", ""},
        {"", "; name", "before any header"}, {"GAME", ";indented", "comment"}, {"s", "k", "v"},
        {"PLAYER 1", "TAB", "value\twith tab"}, {"a]b", "k", "in a]b"}, {"GAME", "missing", ""},
        {"NOSECTION", "name", ""}, {"GAME", "extra", ""}, {"\x0Cs\x0D", "\x09k\x0A", "v"},
        {"s", "eof", "^Z is a blank"}, {"s", "empty", ""}, {"zone", "zip", "z"},
        {"Zone", "zIP", "z"}, {"zone", "az[", "bracket"}, {"zone", "az{", ""}};
    // clang-format on
    for (const Lookup& row : rows)
        EXPECT_EQ(ReadProfileValue(row.section, row.key, file), row.value)
            << "[" << row.section << "] " << row.key;
    EXPECT_EQ(ReadProfileValue("GAME", "card1", file), "(x2)a.bmp,,Value=3|Colour=red");
    EXPECT_EQ(ReadProfileValue(QString::fromUtf8("ärger"), "k", file), "accented");
    EXPECT_EQ(ReadProfileValue(QString::fromUtf8("ÄRGER"), "k", file), "")
        << "only ASCII letters fold";
    EXPECT_EQ(ReadProfileValue("GAME", "name", path("absent.game")), "");
    EXPECT_EQ(ReadProfileValue("GAME", "name", dir.path()), "")
        << "a folder reads as an empty file";

    int n = 0;
    for (const char* text : {"[A]\rx=1\ry=2\r", "[A]\nx=1\ny=2\n", "[A]\r\nx=1\n\ry=2\r[B]\nz=3",
                             "[A]\r\nx=1\r\ny=2"}) {
        const QString ended = path(QString::number(++n));
        put(ended, text);
        EXPECT_EQ(ReadProfileValue("A", "x", ended), "1") << n;
        EXPECT_EQ(ReadProfileValue("A", "y", ended), "2") << n;
    }
    EXPECT_EQ(ReadProfileValue("B", "z", path("3")), "3");

    static const char kNulNames[] = "[s \0x]\r\nk=hidden\r\n[ t\0 ]\r\nk\0 =1\r\n"
                                    "key \0=2\r\n[t]\r\nk=second\r\n";
    const QString longer = path("long.game");
    const QByteArray huge = QByteArray(3 * 1024 * 1024, 'h');
    put(longer, "[D]\r\nlong=" + QByteArray(300, 'v') + "\r\nhuge=" + huge + "\r\nnul=ab" +
                    QByteArray(1, '\0') + "cd\r\nafter=ok\r\none=\"\r\n" +
                    QByteArray(kNulNames, sizeof kNulNames - 1));
    EXPECT_EQ(ReadProfileValue("D", "long", longer), QString(254, u'v'));
    EXPECT_EQ(ReadProfileValue("D", "huge", longer), QString(254, u'h'));
    EXPECT_EQ(ReadProfileValue("D", "one", longer), "\"");
    // In quotes, only a text of exactly 254 loses a letter, as on Windows.
    for (const int n : {253, 254, 255}) {
        put(path("q.game"), "[q]\r\nv=\"" + QByteArray(n, 'q') + "\"\r\n");
        EXPECT_EQ(ReadProfileValue("q", "v", path("q.game")).size(), n == 255 ? 254 : 253) << n;
    }
    EXPECT_EQ(ReadProfileValue("D", "nul", longer), "ab");
    EXPECT_EQ(ReadProfileValue("D", "after", longer), "ok");
    // A NUL ends a name after its blanks are gone: "[s \0x]" names "s ", "[ t\0 ]" names "t".
    EXPECT_EQ(ReadProfileValue("s", "k", longer), "");
    EXPECT_EQ(ReadProfileValue("t", "k", longer), "1");
    EXPECT_EQ(ReadProfileValue("t", "key", longer), "");

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
    EXPECT_TRUE(bytesOf(junkFile).startsWith(junk))
        << "a write must keep every byte it does not own";
    store::DropProfileCache();
    EXPECT_EQ(ReadProfileValue("Fresh", "key", junkFile), "value");
}
