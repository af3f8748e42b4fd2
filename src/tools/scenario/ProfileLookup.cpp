#include "tools/scenario/ProfileLookup.h"

#include "store/ProfileDocument.h"

#include <QList>

namespace scenario {
namespace {

using store::detail::isProfileBlank;

// A NUL ends a name where it stands.
QByteArray cutAtNul(QByteArray s) {
    const qsizetype nul = s.indexOf('\0');
    if (nul >= 0)
        s.truncate(nul);
    return s;
}

// The file's text as bytes that names can be matched in: UTF-16 becomes UTF-8.
QByteArray textOf(const QByteArray& file, bool& unicode) {
    unicode = true;
    if (file.startsWith("\xEF\xBB\xBF"))
        return file.mid(3);
    const bool le = file.startsWith("\xFF\xFE");
    if (le || file.startsWith("\xFE\xFF")) {
        QString text;
        for (qsizetype i = 2; i + 1 < file.size(); i += 2) {
            const auto a = static_cast<unsigned char>(file[i]);
            const auto b = static_cast<unsigned char>(file[i + 1]);
            text.append(QChar(le ? (b << 8 | a) : (a << 8 | b)));
        }
        return text.toUtf8();
    }
    unicode = false;
    return file;
}

QByteArray trimBlanks(QByteArray s) {
    qsizetype b = 0, e = s.size();
    while (b < e && isProfileBlank(s[b]))
        ++b;
    while (e > b && isProfileBlank(s[e - 1]))
        --e;
    return s.mid(b, e - b);
}

QByteArray fold(QByteArray s) {
    for (char& c : s)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return s;
}

QList<QByteArray> splitLines(const QByteArray& bytes) {
    QList<QByteArray> lines;
    qsizetype start = 0;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '\r' && bytes[i] != '\n')
            continue;
        lines << bytes.mid(start, i - start);
        if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n')
            ++i;
        start = i + 1;
    }
    if (start < bytes.size())
        lines << bytes.mid(start);
    return lines;
}

} // namespace

std::optional<QByteArray> findProfileKey(const QByteArray& file, const QString& section,
                                         const QString& key) {
    bool unicode = false;
    const QByteArray bytes = textOf(file, unicode);
    const auto encode = [unicode](const QString& s) { return unicode ? s.toUtf8() : s.toLatin1(); };
    const QByteArray wantSection = fold(trimBlanks(encode(section)));
    const QByteArray wantKey = fold(trimBlanks(encode(key)));
    // Lines before the first header belong to the section "". Only the first
    // section of a name counts.
    bool inSection = wantSection.isEmpty();
    bool seenSection = inSection;
    for (const QByteArray& raw : splitLines(bytes)) {
        const QByteArray line = trimBlanks(raw);
        if (line.isEmpty())
            continue;
        if (line.startsWith('[')) {
            const qsizetype close = line.lastIndexOf(']');
            if (close > 0) {
                if (inSection)
                    return std::nullopt;
                inSection = !seenSection &&
                            fold(cutAtNul(trimBlanks(line.mid(1, close - 1)))) == wantSection;
                seenSection = seenSection || inSection;
                continue;
            }
        }
        if (!inSection)
            continue;
        const qsizetype eq = line.indexOf('=');
        const QByteArray name = eq < 0 ? line : trimBlanks(line.left(eq));
        if (fold(cutAtNul(name)) == wantKey)
            return eq < 0 ? QByteArray() : trimBlanks(line.mid(eq + 1));
    }
    return std::nullopt;
}

} // namespace scenario
