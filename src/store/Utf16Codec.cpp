#include "store/Utf16Codec.h"

namespace store::detail {

namespace {

char16_t unitAt(const char* p, bool bigEndian) {
    const auto a = static_cast<unsigned char>(p[0]);
    const auto b = static_cast<unsigned char>(p[1]);
    return static_cast<char16_t>(bigEndian ? (a << 8 | b) : (b << 8 | a));
}

void putUnit(QByteArray& out, char16_t unit, bool bigEndian) {
    const char hi = static_cast<char>(unit >> 8);
    const char lo = static_cast<char>(unit & 0xFF);
    out.append(bigEndian ? hi : lo);
    out.append(bigEndian ? lo : hi);
}

// Appends the generalized UTF-8 of a sequence of 16-bit units.
template <typename UnitAt> QByteArray encodeUnits(qsizetype count, UnitAt unit) {
    QByteArray out;
    out.reserve(count + count / 2);
    for (qsizetype i = 0; i < count; ++i) {
        char32_t c = unit(i);
        if (c < 0x80) {
            out.append(static_cast<char>(c));
            continue;
        }
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < count) {
            const char32_t low = unit(i + 1);
            if (low >= 0xDC00 && low < 0xE000) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                ++i;
            }
        }
        if (c < 0x800) {
            out.append(static_cast<char>(0xC0 | c >> 6));
        } else if (c < 0x10000) {
            out.append(static_cast<char>(0xE0 | c >> 12));
            out.append(static_cast<char>(0x80 | (c >> 6 & 0x3F)));
        } else {
            out.append(static_cast<char>(0xF0 | c >> 18));
            out.append(static_cast<char>(0x80 | (c >> 12 & 0x3F)));
            out.append(static_cast<char>(0x80 | (c >> 6 & 0x3F)));
        }
        out.append(static_cast<char>(0x80 | (c & 0x3F)));
    }
    return out;
}

// Calls `put` with each 16-bit unit of generalized UTF-8. The text comes from
// encodeUnits, so it is well formed; a cut sequence at the end is dropped.
template <typename Put> void decodeUnits(const char* data, qsizetype size, Put put) {
    const auto* p = reinterpret_cast<const unsigned char*>(data);
    const auto* end = p + size;
    while (p < end) {
        const unsigned char lead = *p;
        const int extra = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        if (end - p <= extra)
            return;
        char32_t c = extra == 0   ? lead
                     : extra == 1 ? lead & 0x1F
                     : extra == 2 ? lead & 0x0F
                                  : lead & 0x07;
        for (int k = 1; k <= extra; ++k)
            c = c << 6 | (p[k] & 0x3F);
        p += extra + 1;
        if (c >= 0x10000) {
            c -= 0x10000;
            put(static_cast<char16_t>(0xD800 + (c >> 10)));
            put(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
        } else {
            put(static_cast<char16_t>(c));
        }
    }
}

} // namespace

QByteArray utf16ToWtf8(const char* data, qsizetype size, bool bigEndian) {
    return encodeUnits(size / 2, [&](qsizetype i) { return unitAt(data + 2 * i, bigEndian); });
}

QByteArray wtf8ToUtf16(const char* data, qsizetype size, bool bigEndian) {
    QByteArray out;
    out.reserve(size * 2);
    decodeUnits(data, size, [&](char16_t unit) { putUnit(out, unit, bigEndian); });
    return out;
}

QByteArray toWtf8(const QString& text) {
    const QChar* units = text.constData();
    return encodeUnits(text.size(), [&](qsizetype i) { return units[i].unicode(); });
}

QString fromWtf8(const char* data, qsizetype size) {
    QString out;
    out.reserve(size);
    decodeUnits(data, size, [&](char16_t unit) { out.append(QChar(unit)); });
    return out;
}

} // namespace store::detail
