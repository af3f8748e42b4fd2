#pragma once
// How a reader takes a line of a profile file and the names in it, shared by
// the parse and the write of a document. Inline: the parse classifies every
// line of the file.

#include "store/AnsiCodec.h"
#include "store/ProfileDocument.h"

#include <QByteArray>
#include <QString>

#include <cstring>

namespace store::detail {

enum class LineKind { Blank, Header, Key };

// What a line means to a reader: the same rules that the Windows profile
// functions apply, so that files behave alike on both sides. There are no
// comments: a line "; x=1" is the key "; x".
struct LineShape {
    LineKind kind = LineKind::Blank;
    const char* nameBegin = nullptr;
    const char* nameEnd = nullptr;
    // Where the name ends for a reader: a NUL ends it, as it ends a C string.
    const char* nameCut = nullptr;
    const char* equals = nullptr; // null for a key line without "="
    const char* valueBegin = nullptr;
    const char* valueEnd = nullptr;
};

inline const char* cutAtNul(const char* b, const char* e) {
    const void* nul = std::memchr(b, '\0', static_cast<std::size_t>(e - b));
    return nul ? static_cast<const char*>(nul) : e;
}

inline LineShape classify(const char* p, qsizetype n) {
    LineShape shape;
    const char* s = p;
    const char* e = p + n;
    while (s < e && isProfileBlank(*s))
        ++s;
    while (e > s && isProfileBlank(e[-1]))
        --e;
    if (s == e)
        return shape;
    if (*s == '[') {
        const char* close = e - 1;
        while (close > s && *close != ']')
            --close;
        if (close > s) {
            const char* nb = s + 1;
            const char* ne = close;
            while (nb < ne && isProfileBlank(*nb))
                ++nb;
            while (ne > nb && isProfileBlank(ne[-1]))
                --ne;
            shape.kind = LineKind::Header;
            shape.nameBegin = nb;
            shape.nameEnd = ne;
            shape.nameCut = cutAtNul(nb, ne);
            return shape;
        }
        // "[" with no "]" after it is no header; such a line reads as a key.
    }
    shape.kind = LineKind::Key;
    shape.nameBegin = s;
    shape.equals = static_cast<const char*>(std::memchr(s, '=', static_cast<std::size_t>(e - s)));
    const char* ne = shape.equals ? shape.equals : e;
    while (ne > s && isProfileBlank(ne[-1]))
        --ne;
    shape.nameEnd = ne;
    shape.nameCut = cutAtNul(s, ne);
    const char* vb = shape.equals ? shape.equals + 1 : e;
    while (vb < e && isProfileBlank(*vb))
        ++vb;
    shape.valueBegin = vb;
    shape.valueEnd = e;
    return shape;
}

inline void foldInPlace(QByteArray& name) {
    for (char& c : name) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
}

inline QByteArray foldName(const char* b, const char* e) {
    QByteArray out(b, e - b);
    foldInPlace(out);
    return out;
}

inline QByteArray foldName(const QByteArray& name) {
    return foldName(name.constData(), name.constData() + name.size());
}

// A name as a caller hands it over: cut at a NUL, as the text crosses as a C
// string, and without blanks around it.
inline QByteArray callerName(const QString& name, FileEncoding encoding) {
    QByteArray out = encodeText(name, encoding);
    const qsizetype nul = out.indexOf('\0');
    if (nul >= 0)
        out.truncate(nul);
    qsizetype e = out.size();
    while (e > 0 && isProfileBlank(out[e - 1]))
        --e;
    out.truncate(e);
    qsizetype b = 0;
    while (b < out.size() && isProfileBlank(out[b]))
        ++b;
    if (b > 0)
        out.remove(0, b);
    return out;
}

} // namespace store::detail
