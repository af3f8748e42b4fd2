#include "tools/scenario/ProfileLookup.h"

#include <QList>

namespace scenario {
namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\v' || c == '\f';
}

QByteArray trimBlanks(QByteArray s) {
    qsizetype b = 0, e = s.size();
    while (b < e && isBlank(s[b]))
        ++b;
    while (e > b && isBlank(s[e - 1]))
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
    QByteArray bytes = file;
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    const QByteArray wantSection = fold(trimBlanks(section.toLatin1()));
    const QByteArray wantKey = fold(trimBlanks(key.toLatin1()));
    bool seenSection = false; // only the first section of that name counts
    bool inSection = false;
    for (const QByteArray& raw : splitLines(bytes)) {
        const QByteArray line = trimBlanks(raw);
        if (line.isEmpty())
            continue;
        if (line.startsWith('[')) {
            const qsizetype close = line.lastIndexOf(']');
            if (close > 0) {
                if (inSection)
                    return std::nullopt;
                inSection = !seenSection && fold(trimBlanks(line.mid(1, close - 1))) == wantSection;
                seenSection = seenSection || inSection;
                continue;
            }
        }
        if (!inSection)
            continue;
        const qsizetype eq = line.indexOf('=');
        const QByteArray name = eq < 0 ? line : trimBlanks(line.left(eq));
        if (fold(name) == wantKey)
            return eq < 0 ? QByteArray() : trimBlanks(line.mid(eq + 1));
    }
    return std::nullopt;
}

} // namespace scenario
