#include "tools/compat/CompatCase.h"

#include "store/AnsiCodec.h"

#include <random>

namespace compat {

namespace {

using store::detail::decodeText;
using store::detail::FileEncoding;

class Generator {
public:
    explicit Generator(quint32 seed) : m_rng(seed) {}

    Case make(int index) {
        Case c;
        c.name = QStringLiteral("random %1").arg(index);
        const int encoding = pick(8);
        QByteArray text;
        const int lines = pick(12);
        for (int i = 0; i < lines; ++i)
            text += line() + lineEnd();
        if (chance(4) && text.endsWith('\n'))
            text.chop(1);
        // The file's text is made as Windows-1252; the marked encodings carry
        // the same characters.
        QString unicode = decodeText(text.constData(), text.size(), FileEncoding::Ansi);
        // "@" stands for what only Unicode holds: a letter beyond the code
        // page, a character beyond 16 bits, a surrogate that pairs with nothing.
        for (qsizetype at = unicode.indexOf(u'@'); at >= 0; at = unicode.indexOf(u'@', at + 1)) {
            static const QString kWide[] = {
                QString::fromUtf8("\u03a9"), QString::fromUtf8("\u0100"),
                QString::fromUtf8("\U0001F600"), QString(QChar(0xDC01))};
            if (encoding == 1 || encoding == 2)
                unicode.replace(at, 1, kWide[pick(4)]);
        }
        switch (encoding) {
        case 0:
            c.before = "\xEF\xBB\xBF" + unicode.toUtf8();
            break;
        case 4:
            // A mark that the bytes after it do not live up to.
            c.before = "\xEF\xBB\xBF" + text;
            break;
        case 1:
            c.before = utf16Le(unicode);
            break;
        case 2:
            c.before = utf16Be(unicode);
            break;
        case 3:
            if (chance(2)) {
                c.before = std::nullopt;
                break;
            }
            [[fallthrough]];
        default:
            c.before = text;
        }
        const int calls = 2 + pick(6);
        for (int i = 0; i < calls; ++i) {
            if (chance(2))
                c.calls.push_back(read(name(), name()));
            else
                c.calls.push_back(write(name(), name(), value()));
        }
        return c;
    }

private:
    int pick(int n) { return static_cast<int>(m_rng() % static_cast<quint32>(n)); }
    bool chance(int oneIn) { return pick(oneIn) == 0; }

    // Bytes whose class matters to a reader: blanks, the syntax, NUL, letters
    // at the ends of the fold, the top half of the code page.
    char anyByte() {
        static const char kBytes[] = " \t\x0B\x0C\x1A[]=;\"'\0aAzZ{@\x80\x81\xC4\xE4\xFF";
        return kBytes[pick(sizeof kBytes - 1)];
    }
    QByteArray blanks() {
        static const char kBlanks[] = " \t\x0B\x0C\x1A";
        QByteArray out;
        for (int n = pick(4) == 0 ? 1 + pick(2) : 0; n > 0; --n)
            out += kBlanks[pick(sizeof kBlanks - 1)];
        return out;
    }
    QByteArray name() {
        static const char* const kNames[] = {"s",    "S",    "k", "K", "zone",  "ZONE", "Zz", "a b",
                                             "\xE4", "\xC4", "x", "",  "card1", ";k",   "k;"};
        QByteArray out = kNames[pick(sizeof kNames / sizeof kNames[0])];
        if (chance(8))
            out += anyByte();
        return blanks() + out + blanks();
    }
    QByteArray value() {
        switch (pick(8)) {
        case 0:
            return {};
        case 1:
            return blanks() + "\"" + name() + "\"";
        case 2:
            return QByteArray(250 + pick(10), 'v');
        default: {
            QByteArray out = blanks();
            for (int n = pick(8); n > 0; --n)
                out += chance(3) ? anyByte() : char('a' + pick(26));
            return out + blanks();
        }
        }
    }
    QByteArray line() {
        switch (pick(6)) {
        case 0:
            return blanks() + '[' + name() + ']' + (chance(6) ? QByteArray(1, anyByte()) : "");
        case 1:
            return blanks();
        case 2: {
            QByteArray out;
            for (int n = pick(10); n > 0; --n)
                out += anyByte();
            return out;
        }
        case 3:
            return name();
        default:
            return name() + '=' + value();
        }
    }
    QByteArray lineEnd() {
        switch (pick(6)) {
        case 0:
            return "\n";
        case 1:
            return "\r";
        default:
            return "\r\n";
        }
    }

    std::mt19937 m_rng;
};

} // namespace

std::vector<Case> randomCases(quint32 seed, int count) {
    Generator generator(seed);
    std::vector<Case> cases;
    for (int i = 0; i < count; ++i)
        cases.push_back(generator.make(i));
    return cases;
}

} // namespace compat
