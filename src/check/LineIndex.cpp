#include "check/LineIndex.h"

#include "store/ProfileDocument.h"

#include <QStringDecoder>

namespace check {

namespace {

// The blanks a profile reader drops around names and values, as the store has them.
bool isBlank(QChar c) {
    return c.unicode() < 0x80 &&
           store::detail::isProfileBlank(static_cast<char>(c.unicode()));
}

QStringView trimmedBlanks(QStringView text) {
    qsizetype b = 0;
    qsizetype e = text.size();
    while (b < e && isBlank(text[b]))
        ++b;
    while (e > b && isBlank(text[e - 1]))
        --e;
    return text.mid(b, e - b);
}

// A name ends at a NUL for the Windows readers.
QString cutAtNul(QStringView name) {
    const qsizetype nul = name.indexOf(QChar(0));
    return (nul < 0 ? name : name.left(nul)).toString();
}

QString decode(const QByteArray& bytes) {
    if (bytes.startsWith("\xEF\xBB\xBF"))
        return QString::fromUtf8(bytes.mid(3));
    if (bytes.startsWith("\xFF\xFE")) {
        QStringDecoder decoder(QStringDecoder::Utf16LE);
        return decoder(bytes.mid(2));
    }
    if (bytes.startsWith("\xFE\xFF")) {
        QStringDecoder decoder(QStringDecoder::Utf16BE);
        return decoder(bytes.mid(2));
    }
    // Single-byte text: one character a byte is all that positions need.
    return QString::fromLatin1(bytes);
}

} // namespace

QString LineIndex::fold(const QString& name) {
    QString out = name;
    for (QChar& c : out) {
        if (c >= u'A' && c <= u'Z')
            c = QChar(c.unicode() - u'A' + u'a');
    }
    return out;
}

void LineIndex::scan(const QByteArray& bytes) {
    m_sections.clear();
    m_firstSection.clear();
    m_sections.emplace_back(); // what stands before the first header
    m_firstSection.insert(QString(), 0);
    const QString text = decode(bytes);
    int line = 0;
    qsizetype p = 0;
    const qsizetype end = text.size();
    while (p < end) {
        qsizetype q = p;
        while (q < end && text[q] != u'\r' && text[q] != u'\n')
            ++q;
        ++line;
        const QStringView raw = QStringView(text).mid(p, q - p);
        p = q;
        if (p < end && text[p] == u'\r' && p + 1 < end && text[p + 1] == u'\n')
            p += 2;
        else if (p < end)
            ++p;

        const QStringView trimmed = trimmedBlanks(raw);
        if (trimmed.isEmpty())
            continue;
        if (trimmed.startsWith(u'[')) {
            const qsizetype close = trimmed.lastIndexOf(u']');
            if (close > 0) {
                Section section;
                section.name = cutAtNul(trimmedBlanks(trimmed.mid(1, close - 1)));
                section.line = line;
                const QString folded = fold(section.name);
                if (!m_firstSection.contains(folded))
                    m_firstSection.insert(folded, static_cast<int>(m_sections.size()));
                m_sections.push_back(std::move(section));
                continue;
            }
        }
        const qsizetype equals = trimmed.indexOf(u'=');
        Key key;
        key.name = cutAtNul(trimmedBlanks(trimmed.left(equals < 0 ? trimmed.size() : equals)));
        key.line = line;
        key.valueLength = equals < 0 ? 0 : trimmedBlanks(trimmed.mid(equals + 1)).size();
        Section& section = m_sections.back();
        const QString folded = fold(key.name);
        if (!section.firstKey.contains(folded))
            section.firstKey.insert(folded, static_cast<int>(section.keys.size()));
        section.keys.push_back(std::move(key));
    }
}

const LineIndex::Section* LineIndex::section(const QString& name) const {
    const auto it = m_firstSection.constFind(fold(name));
    return it == m_firstSection.cend() ? nullptr : &m_sections[static_cast<std::size_t>(*it)];
}

bool LineIndex::hasKey(const QString& sectionName, const QString& key) const {
    const Section* s = section(sectionName);
    return s && s->firstKey.contains(fold(key));
}

bool LineIndex::hasFoldedKey(const Section& section, const QString& foldedKey) {
    return section.firstKey.contains(foldedKey);
}

int LineIndex::lineOf(const QString& sectionName, const QString& key) const {
    const Section* s = section(sectionName);
    if (!s)
        return 0;
    if (!key.isEmpty()) {
        const auto it = s->firstKey.constFind(fold(key));
        if (it != s->firstKey.cend())
            return s->keys[static_cast<std::size_t>(*it)].line;
    }
    return s->line;
}

} // namespace check
