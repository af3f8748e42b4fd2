#include "tools/compat/CompatCase.h"

#include "store/Utf16Codec.h"

namespace compat {

namespace {

// A literal with every byte it holds, NULs included.
template <std::size_t N> QByteArray b(const char (&text)[N]) {
    return QByteArray(text, N - 1);
}

// The store's codec makes the bytes; the Windows side judges the file anyway.
QByteArray encodeUnits(const QString& text, bool bigEndian) {
    const QByteArray wtf8 = store::detail::toWtf8(text);
    return (bigEndian ? QByteArray("\xFE\xFF") : QByteArray("\xFF\xFE")) +
           store::detail::wtf8ToUtf16(wtf8.constData(), wtf8.size(), bigEndian);
}

} // namespace

Call read(const QByteArray& section, const QByteArray& key) {
    return {Call::Read, section, key, {}};
}

Call write(const QByteArray& section, const QByteArray& key, const QByteArray& value) {
    return {Call::Write, section, key, value};
}

QByteArray utf16Le(const QString& text) {
    return encodeUnits(text, false);
}

QByteArray utf16Be(const QString& text) {
    return encodeUnits(text, true);
}

std::vector<Case> handCases() {
    const QString game = QString::fromUtf8("; made by hand\r\n[GAME]\r\nname=Caf\u00e9 \u20ac\r\n"
                                           "[s]\r\nk=1\r\n");
    std::vector<Case> cases = {
        // Encodings, by their marks.
        {"utf-16le",
         utf16Le(game),
         {read("GAME", "name"), read("s", "k"), write("s", "b", "2"),
          write("GAME", "name", "\x80x"), read("GAME", "name"), write("new", "k", "\xE9")},
         {}},
        {"utf-16be",
         utf16Be(game),
         {read("GAME", "name"), write("s", "k", "2"), read("s", "k"), write("t", "k", "3")},
         {}},
        {"utf-16 with LF line ends",
         utf16Le(QStringLiteral("[s]\nk=1\n")),
         {read("s", "k"), write("s", "k", "2"), write("s", "n", "3"), read("s", "n")},
         {}},
        {"utf-16 with a lone surrogate",
         utf16Le(QStringLiteral("[s]\r\nodd=a") + QChar(0xDC00) + QStringLiteral("b\r\nk=1\r\n")),
         {read("s", "k"), write("s", "k", "2")},
         {}},
        {"utf-16 mark alone",
         b("\xFF\xFE"),
         {read("s", "b"), write("s", "b", "2"), read("s", "b")},
         {}},
        {"utf-16be mark alone", b("\xFE\xFF"), {write("s", "b", "2"), read("s", "b")}, {}},
        {"utf-8",
         b("\xEF\xBB\xBF[s]\r\nk=caf\xC3\xA9\r\n"),
         {read("s", "k"), write("s", "k", "\xE9t\xE9"), read("s", "k")},
         {}},
        {"utf-8 mark alone", b("\xEF\xBB\xBF"), {write("s", "k", "\xFF"), read("s", "k")}, {}},
        {"utf-8 with bytes that are no UTF-8",
         b("\xEF\xBB\xBF[s]\r\nbad=\xC3(\r\nk=1\r\n"),
         {write("s", "k", "2"), read("s", "k")},
         {}},

        // Blanks are tab to carriage return, ^Z and the space.
        {"blanks around names and values",
         b("[s]\r\n\x0Bk\x0B=\x0Cv\x0C\r\n\x1A z\x1A=\x1A\x0By\r\n"),
         {read("s", "k"), read("s", "z"), read("\x0Bs\x09", "\x0Ck\x1A"), write("s", "w", "\x0Bv"),
          write("s", "k", "\x1A\x0C u"), read("s", "w"), read("s", "k")},
         {}},
        {"blanks around headers",
         b("\x0B[\x0Cs\x0C]\x0B\r\nk=1\r\n"),
         {read("s", "k"), write("s", "k", "2")},
         {}},

        // No comments.
        {"lines that open with a semicolon",
         b(";top=t\r\n[s]\r\n;k=v\r\n ; x = y \r\n"),
         {read("s", ";k"), read("s", "; x"), read("", ";top"), write("s", ";k", "w"),
          read("s", ";k")},
         {}},

        // Lines before the first header.
        {"the section before the first header",
         b("k=v\r\n=e\r\n[s]\r\nk=1\r\n"),
         {read("", "k"), read("", ""), read("s", "k"), write("", "k", "w"), write("", "n", "1"),
          read("", "n")},
         {}},
        {"the section before the first header of an empty file",
         b(""),
         {write("", "k", "v"), write("s", "k", "1"), read("", "k")},
         {}},
        {"an empty header",
         b("[]\r\nk=under\r\n"),
         {read("", "k"), write("", "k", "top")},
         "a header with no name"},

        // A NUL ends the name it stands in.
        {"NUL bytes in names",
         b("[s\0x]\r\nk\0ey=1\r\n[t \0x]\r\nk=2\r\n"),
         {read("s", "k"), read("t", "k"), write("s", "k", "3"), write("s", "key", "4"),
          read("s", "key")},
         "bytes after a NUL"},
        {"NUL bytes in values", b("[s]\r\nk=a\0b\r\n"), {read("s", "k"), write("s", "n", "x")}, {}},

        // Names that do not read back as they were written.
        {"a key holding =",
         b("[s]\r\nk=1\r\n"),
         {write("s", "a=b", "v"), read("s", "a=b"), read("s", "a"), write("s", "a=b", "w"),
          read("s", "a")},
         {}},
        {"keys that open with ; or [",
         b("[s]\r\nk=1\r\n"),
         {write("s", ";c", "v"), write("s", "[c", "w"), write("s", "[d", "x]"), read("s", ";c"),
          read("s", "[c"), read("s", "[d"), read("d", "")},
         {}},
        {"names holding CR or LF",
         b("[s]\r\nk=1\r\n"),
         {write("s", "a\rb", "v"), write("s", "c\nd", "w"), write("x\r\ny", "k", "z"),
          read("s", "b"), read("s", "d"), read("s", "a"), read("x", "k")},
         {}},

        // What already agreed.
        {"letter case of names",
         b("[GAME Zone]\r\nNAME=Duel\r\nzeta=z\r\n[\xC4rger]\r\nk=1\r\n"),
         {read("game zone", "name"), read("GAME ZONE", "ZETA"), read("Game zONE", "Zeta"),
          read("\xE4rger", "k"), read("\xC4RGER", "K"), write("game ZONE", "NAME", "Trio")},
         {}},
        {"blanks around =",
         b("[s]\r\n  k  =  v  \r\nl\t=\tw\t\r\n"),
         {read("s", "k"), read("s", "l"), write("s", "k", "  x  ")},
         {}},
        {"quotes",
         b("[s]\r\na=\"\"\r\nb='x'\r\nc=\"\r\nd=\"x'\r\ne=\" x \"\r\nf=''\r\n"),
         {read("s", "a"), read("s", "b"), read("s", "c"), read("s", "d"), read("s", "e"),
          read("s", "f"), write("s", "g", "\"\""), read("s", "g"), write("s", "h", "'y'"),
          read("s", "h")},
         {}},
        {"long lines and the cut at 254",
         "[s]\r\nk=" + QByteArray(300, 'v') + "\r\n",
         {read("s", "k"), write("s", "n", QByteArray(254, 'a') + "bc"), read("s", "n"),
          write("s", "q", '"' + QByteArray(260, 'q') + '"'), read("s", "q")},
         {}},
        {"quoted values around the cut",
         "[s]\r\na=\"" + QByteArray(253, 'a') + "\"\r\nb=\"" + QByteArray(254, 'b') +
             "\"\r\nc='" + QByteArray(254, 'c') + "'\r\nd=\"" + QByteArray(255, 'd') +
             "\"\r\ne=\"" + QByteArray(252, 'e') + "\"\r\n",
         {read("s", "a"), read("s", "b"), read("s", "c"), read("s", "d"), read("s", "e")},
         {}},
        {"CR line ends",
         b("[s]\rk=1\rl=2\r"),
         {read("s", "l"), write("s", "m", "3"), write("t", "n", "4")},
         {}},
        {"LF line ends",
         b("[s]\nk=1\nl=2\n"),
         {read("s", "l"), write("s", "m", "3"), write("t", "n", "4")},
         {}},
        {"mixed line ends",
         b("[s]\r\nk=1\n\rl=2\r[t]\nm=3"),
         {read("s", "l"), read("t", "m"), write("s", "x", "1"), write("t", "y", "2")},
         {}},
        {"no line end at the end", b("[s]\r\nk=1"), {read("s", "k"), write("s", "l", "2")}, {}},
        {"a new section at the end",
         b("[a]\r\nk=1\r\n\r\n[b]\r\nk=2\r\n"),
         {write("c", "k", "3"), read("c", "k")},
         {}},
        {"a new key in a middle section",
         b("[a]\r\nk=1\r\n\r\n[b]\r\nk=2\r\n\r\n[c]\r\nk=3\r\n"),
         {write("b", "new", "x"), read("b", "new"), read("c", "k")},
         {}},
        {"the first of two sections of a name",
         b("[s]\r\nk=1\r\n[S]\r\nk=2\r\nl=3\r\n"),
         {read("s", "k"), read("s", "l"), write("s", "l", "4")},
         {}},
        {"a missing file",
         std::nullopt,
         {read("s", "k"), write("s", "k", "1"), read("s", "k")},
         {}},
        {"the top of the code page",
         b("[s]\r\nk=1\r\n"),
         {write("s", "k", "\xFF\xFE\x80\x81"), read("s", "k")},
         {}},
        {"a value with a line break",
         b("[s]\r\nk=1\r\n"),
         {write("s", "k", "one\r\n[t]\r\nu=two"), read("s", "k"), read("t", "u")},
         {}},
    };
    return cases;
}

} // namespace compat
