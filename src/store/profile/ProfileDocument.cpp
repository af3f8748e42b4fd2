#include "store/profile/ProfileDocument.h"

#include <cstring>

namespace Globals::ProfileDetail {

namespace {

constexpr char kUtf8Mark[] = "\xEF\xBB\xBF";

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

enum class LineKind { Blank, Comment, Header, Key };

// What a line means to a reader: the same rules that the Windows profile
// functions apply, so that files behave alike on both sides.
struct LineShape {
    LineKind kind = LineKind::Blank;
    const char* nameBegin = nullptr;
    const char* nameEnd = nullptr;
    const char* equals = nullptr; // null for a key line without "="
    const char* valueBegin = nullptr;
    const char* valueEnd = nullptr;
};

LineShape classify(const char* p, qsizetype n) {
    LineShape shape;
    const char* s = p;
    const char* e = p + n;
    while (s < e && isBlank(*s))
        ++s;
    while (e > s && isBlank(e[-1]))
        --e;
    if (s == e)
        return shape;
    if (*s == ';') {
        shape.kind = LineKind::Comment;
        return shape;
    }
    if (*s == '[') {
        const char* close = e - 1;
        while (close > s && *close != ']')
            --close;
        if (close > s) {
            const char* nb = s + 1;
            const char* ne = close;
            while (nb < ne && isBlank(*nb))
                ++nb;
            while (ne > nb && isBlank(ne[-1]))
                --ne;
            shape.kind = LineKind::Header;
            shape.nameBegin = nb;
            shape.nameEnd = ne;
            return shape;
        }
        // "[" with no "]" after it is no header; such a line reads as a key.
    }
    shape.kind = LineKind::Key;
    shape.nameBegin = s;
    shape.equals = static_cast<const char*>(std::memchr(s, '=', static_cast<std::size_t>(e - s)));
    const char* ne = shape.equals ? shape.equals : e;
    while (ne > s && isBlank(ne[-1]))
        --ne;
    shape.nameEnd = ne;
    const char* vb = shape.equals ? shape.equals + 1 : e;
    while (vb < e && isBlank(*vb))
        ++vb;
    shape.valueBegin = vb;
    shape.valueEnd = e;
    return shape;
}

QByteArray foldName(const char* b, const char* e) {
    QByteArray out(b, e - b);
    for (char& c : out) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return out;
}

QByteArray foldName(const QByteArray& name) {
    return foldName(name.constData(), name.constData() + name.size());
}

QByteArray trimmedBlanks(const QByteArray& text) {
    qsizetype b = 0;
    qsizetype e = text.size();
    while (b < e && isBlank(text[b]))
        ++b;
    while (e > b && isBlank(text[e - 1]))
        --e;
    return (b == 0 && e == text.size()) ? text : text.mid(b, e - b);
}

// The form in which a caller's name is looked up: in the file's encoding,
// without blanks around it, ASCII letters folded. Done in place: reads are hot.
QByteArray lookupName(const QString& name, FileEncoding encoding) {
    QByteArray out = encodeText(name, encoding);
    qsizetype e = out.size();
    while (e > 0 && isBlank(out[e - 1]))
        --e;
    out.truncate(e);
    qsizetype b = 0;
    while (b < out.size() && isBlank(out[b]))
        ++b;
    if (b > 0)
        out.remove(0, b);
    for (char& c : out) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return out;
}

const char* lineEndText(LineEnd end) {
    switch (end) {
    case LineEnd::Lf:
        return "\n";
    case LineEnd::Cr:
        return "\r";
    case LineEnd::CrLf:
        return "\r\n";
    case LineEnd::None:
        break;
    }
    return "";
}

// Of two sections or keys of one name, the first one wins.
void addFirst(QHash<QByteArray, int>& index, QByteArray&& name, int position) {
    if (!index.contains(name))
        index.insert(std::move(name), position);
}

bool hasLineBreak(const QByteArray& text) {
    return text.contains('\r') || text.contains('\n');
}

} // namespace

void Line::setText(QByteArray text) {
    own = std::move(text);
    data = own.constData();
    size = own.size();
}

void ProfileDocument::load(const QByteArray& bytes) {
    m_bytes = bytes;
    m_bom = bytes.startsWith(kUtf8Mark);
    m_encoding = m_bom ? FileEncoding::Utf8 : FileEncoding::Ansi;
    parse(LineEnd::None);
}

void ProfileDocument::parse(LineEnd keepStyle) {
    m_sections.clear();
    m_sectionIndex.clear();
    m_sections.emplace_back();
    m_style = keepStyle;

    const char* p = m_bytes.constData() + (m_bom ? 3 : 0);
    const char* end = m_bytes.constData() + m_bytes.size();
    while (p < end) {
        const char* q = p;
        while (q < end && *q != '\r' && *q != '\n')
            ++q;
        Line line;
        line.data = p;
        line.size = q - p;
        if (q == end) {
            line.end = LineEnd::None;
            p = q;
        } else if (*q == '\r' && q + 1 < end && q[1] == '\n') {
            line.end = LineEnd::CrLf;
            p = q + 2;
        } else {
            line.end = *q == '\r' ? LineEnd::Cr : LineEnd::Lf;
            p = q + 1;
        }
        if (m_style == LineEnd::None)
            m_style = line.end;

        const LineShape shape = classify(line.data, line.size);
        if (shape.kind == LineKind::Header) {
            Section section;
            section.hasHeader = true;
            section.header = line;
            const int index = static_cast<int>(m_sections.size());
            addFirst(m_sectionIndex, foldName(shape.nameBegin, shape.nameEnd), index);
            m_sections.push_back(std::move(section));
            continue;
        }
        Section& section = m_sections.back();
        if (shape.kind == LineKind::Key) {
            addFirst(section.keys, foldName(shape.nameBegin, shape.nameEnd),
                     static_cast<int>(section.lines.size()));
        }
        section.lines.push_back(line);
    }
    if (m_style == LineEnd::None)
        m_style = LineEnd::CrLf;
}

const ProfileDocument::Section* ProfileDocument::findSection(const QByteArray& foldedName) const {
    const auto it = m_sectionIndex.constFind(foldedName);
    return it == m_sectionIndex.cend() ? nullptr : &m_sections[static_cast<std::size_t>(*it)];
}

QString ProfileDocument::read(const QString& section, const QString& key) const {
    const Section* found = findSection(lookupName(section, m_encoding));
    if (!found)
        return {};
    const auto keyIt = found->keys.constFind(lookupName(key, m_encoding));
    if (keyIt == found->keys.cend())
        return {};
    const Line& line = found->lines[static_cast<std::size_t>(*keyIt)];
    const LineShape shape = classify(line.data, line.size);
    const char* b = shape.valueBegin;
    const char* e = shape.valueEnd;
    if (const void* nul = std::memchr(b, '\0', static_cast<std::size_t>(e - b)))
        e = static_cast<const char*>(nul);
    if (e - b >= 2 && (*b == '"' || *b == '\'') && e[-1] == *b) {
        ++b;
        --e;
    }
    QString value = decodeText(b, e - b, m_encoding);
    if (value.size() > kMaxValueLength) {
        qsizetype keep = kMaxValueLength;
        if (value.at(keep - 1).isHighSurrogate())
            --keep;
        value.truncate(keep);
    }
    return value;
}

QByteArray ProfileDocument::lineEndBytes() const {
    return QByteArray(lineEndText(m_style));
}

bool ProfileDocument::write(const QString& section, const QString& key, const QString& value) {
    const QByteArray sectionName = trimmedBlanks(encodeText(section, m_encoding));
    const QByteArray keyName = trimmedBlanks(encodeText(key, m_encoding));
    qsizetype lead = 0;
    while (lead < value.size() && (value[lead] == u' ' || value[lead] == u'\t'))
        ++lead;
    const QByteArray valueBytes = encodeText(value.mid(lead), m_encoding);

    const auto sectionIt = m_sectionIndex.constFind(foldName(sectionName));
    if (sectionIt == m_sectionIndex.cend()) {
        appendSection(sectionName, keyName + '=' + valueBytes);
    } else {
        Section& target = m_sections[static_cast<std::size_t>(*sectionIt)];
        const auto keyIt = target.keys.constFind(foldName(keyName));
        if (keyIt == target.keys.cend()) {
            insertKeyLine(target, keyName + '=' + valueBytes);
        } else {
            Line& line = target.lines[static_cast<std::size_t>(*keyIt)];
            const LineShape shape = classify(line.data, line.size);
            QByteArray text;
            if (shape.equals) {
                if (QByteArrayView(shape.valueBegin, shape.valueEnd - shape.valueBegin) ==
                    valueBytes)
                    return false;
                // The key keeps its spelling and the spacing around "=".
                const char* keepTo =
                    shape.valueBegin < shape.valueEnd ? shape.valueBegin : shape.equals + 1;
                text = QByteArray(line.data, keepTo - line.data) + valueBytes;
            } else {
                text = QByteArray(line.data, shape.nameEnd - line.data) + '=' + valueBytes;
            }
            if (QByteArrayView(line.data, line.size) == text)
                return false;
            line.setText(std::move(text));
        }
    }
    // A value with line breaks in it makes lines of its own, which may even
    // look like headers: parse it the way the next reader of the file will.
    if (hasLineBreak(valueBytes)) {
        m_bytes = serialize();
        parse(m_style);
    }
    return true;
}

void ProfileDocument::insertKeyLine(Section& section, QByteArray keyLine) {
    int last = static_cast<int>(section.lines.size()) - 1;
    while (last >= 0 && classify(section.lines[static_cast<std::size_t>(last)].data,
                                 section.lines[static_cast<std::size_t>(last)].size)
                                .kind == LineKind::Blank)
        --last;
    Line& before = last >= 0 ? section.lines[static_cast<std::size_t>(last)] : section.header;
    if (before.end == LineEnd::None)
        before.end = m_style;

    const int pos = last + 1;
    const LineShape shape = classify(keyLine.constData(), keyLine.size());
    const QByteArray folded = foldName(shape.nameBegin, shape.nameEnd);
    Line line;
    line.setText(std::move(keyLine));
    line.end = m_style;
    section.lines.insert(section.lines.begin() + pos, std::move(line));
    for (auto it = section.keys.begin(); it != section.keys.end(); ++it) {
        if (*it >= pos)
            ++*it;
    }
    section.keys.insert(folded, pos);
}

void ProfileDocument::appendSection(const QByteArray& name, const QByteArray& keyLine) {
    for (auto it = m_sections.rbegin(); it != m_sections.rend(); ++it) {
        Line* last =
            !it->lines.empty() ? &it->lines.back() : (it->hasHeader ? &it->header : nullptr);
        if (last) {
            if (last->end == LineEnd::None)
                last->end = m_style;
            break;
        }
    }
    Section section;
    section.hasHeader = true;
    section.header.setText('[' + name + ']');
    section.header.end = m_style;
    m_sectionIndex.insert(foldName(name), static_cast<int>(m_sections.size()));
    m_sections.push_back(std::move(section));
    insertKeyLine(m_sections.back(), keyLine);
}

QByteArray ProfileDocument::serialize() const {
    qsizetype total = m_bom ? 3 : 0;
    for (const Section& section : m_sections) {
        if (section.hasHeader)
            total += section.header.size + 2;
        for (const Line& line : section.lines)
            total += line.size + 2;
    }
    QByteArray out;
    out.reserve(total);
    if (m_bom)
        out.append(kUtf8Mark, 3);
    const auto put = [&out](const Line& line) {
        out.append(line.data, line.size);
        out.append(lineEndText(line.end));
    };
    for (const Section& section : m_sections) {
        if (section.hasHeader)
            put(section.header);
        for (const Line& line : section.lines)
            put(line);
    }
    return out;
}

} // namespace Globals::ProfileDetail
