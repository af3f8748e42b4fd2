#include "StoreTestSupport.h"

namespace {

QByteArray utf16(const QString& text, bool bigEndian) {
    QByteArray out = bigEndian ? QByteArray("\xFE\xFF") : QByteArray("\xFF\xFE");
    for (QChar c : text) {
        const char hi = static_cast<char>(c.unicode() >> 8);
        const char lo = static_cast<char>(c.unicode() & 0xFF);
        out.append(bigEndian ? hi : lo);
        out.append(bigEndian ? lo : hi);
    }
    return out;
}

} // namespace

TEST_F(StoreTest, EachFileKeepsItsEncodingAndTextCrossesAsWindows1252UnlessUtf) {
    for (const bool bigEndian : {false, true}) {
        SCOPED_TRACE(bigEndian ? "big-endian" : "little-endian");
        const QString file = path(bigEndian ? "be.game" : "le.game");
        // Surrogates that pair with nothing and LF line ends all go out as they came in.
        const QString before =
            QString::fromUtf8("; by hand\n[GAME]\nname = Caf\u00e9 \u03a9 \U0001F600\n"
                              "odd=") +
            QChar(0xD800) + u'-' + QChar(0xDC00) + QChar(0xDC01) + QStringLiteral("\n[s]\nk=1\n");
        put(file, utf16(before, bigEndian));
        EXPECT_EQ(ReadProfileValue("game", "NAME", file),
                  QString::fromUtf8("Caf\u00e9 \u03a9 \U0001F600"));
        EXPECT_EQ(ReadProfileValue("s", "k", file), "1");

        ASSERT_EQ(WriteProfileValue("s", "k", QString::fromUtf8("\u20ac2"), file), 1);
        ASSERT_EQ(WriteProfileValue("s", "new", "x", file), 1);
        ASSERT_EQ(WriteProfileValue("t", "b", "2", file), 1);
        FlushProfiles();
        QString after = before;
        after.replace("k=1\n", QString::fromUtf8("k=\u20ac2\nnew=x\n[t]\nb=2\n"));
        EXPECT_EQ(bytesOf(file), utf16(after, bigEndian));
        store::DropProfileCache();
        EXPECT_EQ(ReadProfileValue("S", "K", file), QString::fromUtf8("\u20ac2"));
    }

    // A mark with nothing after it is an empty UTF-16 file.
    const QString markOnly = path("mark.game");
    put(markOnly, "\xFF\xFE");
    ASSERT_EQ(save("s", "b", "2", markOnly), 1);
    EXPECT_EQ(bytesOf(markOnly), utf16(QStringLiteral("[s]\r\nb=2\r\n"), false));
    EXPECT_TRUE(errors.empty());

    // An odd last byte: the text reads, but a write would leave a file in two encodings.
    const QString file = path("odd.game");
    const QByteArray odd = utf16(QStringLiteral("[s]\r\nk=1\r\n"), false) + 'x';
    put(file, odd);
    EXPECT_EQ(ReadProfileValue("s", "k", file), "1");
    EXPECT_EQ(WriteProfileValue("s", "k", "2", file), 0);
    FlushProfiles();
    EXPECT_EQ(bytesOf(file), odd);
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors[0].second, "the file's text ends inside a character");

    // UTF-8 with bytes that are no UTF-8: they stay where no write goes.
    const QString utf8 = path("bad8.game");
    put(utf8, "\xEF\xBB\xBF[s]\r\nbad=\xFF\xC3\r\nk=1\r\n");
    ASSERT_EQ(save("s", "k", "2", utf8), 1);
    EXPECT_EQ(bytesOf(utf8), "\xEF\xBB\xBF[s]\r\nbad=\xFF\xC3\r\nk=2\r\n");

    // U+00FF is the last character that maps to itself; U+0100 has no place.
    const QString ansi = path("ansi.game");
    ASSERT_EQ(save("GAME", "name", QString::fromUtf8("€uro café Ω 😀 \u00fe\u00ff\u0100"), ansi), 1);
    EXPECT_EQ(bytesOf(ansi), "[GAME]\r\nname=\x80uro caf\xE9 ? ? \xFE\xFF?\r\n");
    store::DropProfileCache();
    EXPECT_EQ(ReadProfileValue("GAME", "name", ansi),
              QString::fromUtf8("€uro café ? ? \u00fe\u00ff?"));
    put(ansi, "[GAME]\r\nq=\x93quoted\x94 \x81\r\n");
    EXPECT_EQ(ReadProfileValue("GAME", "q", ansi), QString::fromUtf8("“quoted” \u0081"));

    const QString bom = path("utf8.game");
    put(bom, "\xEF\xBB\xBF[GAME]\r\nname=caf\xC3\xA9\r\n");
    EXPECT_EQ(ReadProfileValue("GAME", "name", bom), QString::fromUtf8("café"));
    ASSERT_EQ(save("GAME", "name", QString::fromUtf8("Ω"), bom), 1);
    EXPECT_EQ(bytesOf(bom), "\xEF\xBB\xBF[GAME]\r\nname=\xCE\xA9\r\n");
}
