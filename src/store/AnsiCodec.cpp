#include "store/AnsiCodec.h"

#include "store/Utf16Codec.h"

#include <array>

namespace store::detail {

namespace {

// The 0x80..0x9F block of Windows-1252. Bytes that the code page leaves
// undefined map to the C1 control of the same number, as Windows itself does
// when it converts, so that such bytes survive a read and a write unchanged.
constexpr std::array<char16_t, 32> kHighBlock = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char encodeAnsiChar(char16_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return static_cast<char>(c);
    for (std::size_t i = 0; i < kHighBlock.size(); ++i) {
        if (kHighBlock[i] == c)
            return static_cast<char>(0x80 + i);
    }
    return '?';
}

} // namespace

QByteArray encodeText(const QString& text, FileEncoding encoding) {
    if (encoding == FileEncoding::Utf8)
        return text.toUtf8();
    if (encoding != FileEncoding::Ansi)
        return toWtf8(text);
    QByteArray out;
    out.resize(text.size());
    char* dst = out.data();
    const QChar* src = text.constData();
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = src[i].unicode();
        // A surrogate pair is one character that the code page cannot hold:
        // it becomes one '?', not two.
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && src[i + 1].isLowSurrogate()) {
            ++i;
            *dst++ = '?';
            continue;
        }
        *dst++ = encodeAnsiChar(c);
    }
    out.truncate(dst - out.constData());
    return out;
}

QString decodeText(const char* data, qsizetype size, FileEncoding encoding) {
    if (encoding == FileEncoding::Utf8)
        return QString::fromUtf8(data, size);
    if (encoding != FileEncoding::Ansi)
        return fromWtf8(data, size);
    // Every byte but those of the high block is its own code point: Qt widens
    // those in bulk, and the few others are mended after. Every read and every
    // name of a parse comes through here.
    QString out = QString::fromLatin1(data, size);
    unsigned char high = 0; // a loop without an early exit runs in vector steps
    for (qsizetype i = 0; i < size; ++i)
        high |= static_cast<unsigned char>(static_cast<unsigned char>(data[i]) - 0x80u) < 0x20u;
    if (high) {
        for (QChar& c : out) {
            if (c.unicode() >= 0x80 && c.unicode() < 0xA0)
                c = QChar(kHighBlock[c.unicode() - 0x80]);
        }
    }
    return out;
}

} // namespace store::detail
