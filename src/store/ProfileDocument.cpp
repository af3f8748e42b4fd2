#include "store/ProfileDocument.h"

#include "store/Utf16Codec.h"

#include <cstring>

namespace store::detail {

namespace {

constexpr char kUtf8Mark[] = "\xEF\xBB\xBF";

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

const char* cutAtNul(const char* b, const char* e) {
    const void* nul = std::memchr(b, '\0', static_cast<std::size_t>(e - b));
    return nul ? static_cast<const char*>(nul) : e;
}

LineShape classify(const char* p, qsizetype n) {
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

void foldInPlace(QByteArray& name) {
    for (char& c : name) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
}

QByteArray foldName(const char* b, const char* e) {
    QByteArray out(b, e - b);
    foldInPlace(out);
    return out;
}

// A name of the parsed text as an index key. Most names are already folded,
// and the text outlives its index (each parse builds the index anew), so such
// a key points into the text instead of holding a copy.
QByteArray foldedKey(const char* b, const char* e) {
    for (const char* p = b; p < e; ++p) {
        if (*p >= 'A' && *p <= 'Z')
            return foldName(b, e);
    }
    return QByteArray::fromRawData(b, e - b);
}

QByteArray foldName(const QByteArray& name) {
    return foldName(name.constData(), name.constData() + name.size());
}

// A name as a caller hands it over: cut at a NUL, as the text crosses as a C
// string, and without blanks around it.
QByteArray callerName(const QString& name, FileEncoding encoding) {
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

// The form in which a caller's name is looked up. Reads are hot: a name of
// plain ASCII, which every encoding writes as the same bytes, is folded on the
// stack instead of in a fresh array.
class LookupName {
public:
    LookupName(const QString& name, FileEncoding encoding) {
        const QChar* s = name.constData();
        qsizetype n = name.size();
        bool ascii = n <= qsizetype(sizeof m_buffer);
        for (qsizetype i = 0; ascii && i < n; ++i)
            ascii = s[i].unicode() < 0x80;
        if (!ascii) {
            m_bytes = callerName(name, encoding);
            foldInPlace(m_bytes);
            return;
        }
        for (qsizetype i = 0; i < n; ++i) {
            const char c = static_cast<char>(s[i].unicode());
            if (c == '\0') {
                n = i;
                break;
            }
            m_buffer[i] = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        }
        qsizetype b = 0;
        while (n > 0 && isProfileBlank(m_buffer[n - 1]))
            --n;
        while (b < n && isProfileBlank(m_buffer[b]))
            ++b;
        m_bytes = QByteArray::fromRawData(m_buffer + b, n - b);
    }
    LookupName(const LookupName&) = delete;
    LookupName& operator=(const LookupName&) = delete;

    const QByteArray& bytes() const { return m_bytes; }

private:
    char m_buffer[64];
    QByteArray m_bytes; // may point into m_buffer
};

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

// Names and values that could read back otherwise than they went in, once
// they stand in the file: a line break makes lines of its own, "=" in a key
// moves where the key ends, a key that opens with "[" may look like a header.
bool mayReshape(const QByteArray& section, const QByteArray& key, const QByteArray& value) {
    const auto breaks = [](const QByteArray& t) { return t.contains('\r') || t.contains('\n'); };
    return breaks(section) || breaks(key) || breaks(value) || key.contains('=') ||
           key.startsWith('[');
}

} // namespace

void Line::setText(QByteArray text) {
    own = std::move(text);
    data = own.constData();
    size = own.size();
}

void ProfileDocument::load(const QByteArray& bytes) {
    m_broken = false;
    m_textOffset = 0;
    if (bytes.startsWith(kUtf8Mark)) {
        m_encoding = FileEncoding::Utf8;
        m_mark = QByteArray(kUtf8Mark, 3);
    } else if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) {
        m_encoding = bytes[0] == '\xFF' ? FileEncoding::Utf16Le : FileEncoding::Utf16Be;
        m_mark = bytes.left(2);
    } else {
        m_encoding = FileEncoding::Ansi;
        m_mark.clear();
    }
    if (m_encoding == FileEncoding::Utf16Le || m_encoding == FileEncoding::Utf16Be) {
        // An odd byte at the end belongs to no character; what it meant is
        // anyone's guess, so the text before it is read and the file not written.
        m_broken = bytes.size() % 2 != 0;
        m_bytes = utf16ToWtf8(bytes.constData() + 2, bytes.size() - 2,
                              m_encoding == FileEncoding::Utf16Be);
    } else {
        m_bytes = bytes;
        m_textOffset = m_mark.size();
    }
    parse(LineEnd::None);
}

void ProfileDocument::parse(LineEnd keepStyle) {
    m_lastSection = kNotLookedUp;
    m_sections.clear();
    m_sectionIndex.clear();
    // Lines before the first header make the section "", which no header can
    // take over, as the first section of a name is the one that counts.
    m_sections.emplace_back();
    m_sectionIndex.insert(QByteArray(), 0);
    m_style = keepStyle;

    const char* p = m_bytes.constData() + m_textOffset;
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
            addFirst(m_sectionIndex, foldedKey(shape.nameBegin, shape.nameCut), index);
            m_sections.push_back(std::move(section));
            continue;
        }
        Section& section = m_sections.back();
        if (shape.kind == LineKind::Key) {
            addFirst(section.keys, foldedKey(shape.nameBegin, shape.nameCut),
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
    if (m_lastSection == kNotLookedUp || section != m_lastSectionName) {
        const auto it = m_sectionIndex.constFind(LookupName(section, m_encoding).bytes());
        m_lastSection = it == m_sectionIndex.cend() ? -1 : *it;
        m_lastSectionName = section;
    }
    if (m_lastSection < 0)
        return {};
    const Section* found = &m_sections[static_cast<std::size_t>(m_lastSection)];
    const auto keyIt = found->keys.constFind(LookupName(key, m_encoding).bytes());
    if (keyIt == found->keys.cend())
        return {};
    const Line& line = found->lines[static_cast<std::size_t>(*keyIt)];
    const LineShape shape = classify(line.data, line.size);
    const char* b = shape.valueBegin;
    const char* e = cutAtNul(b, shape.valueEnd);
    bool quoted = false;
    if (e - b >= 2 && (*b == '"' || *b == '\'') && e[-1] == *b) {
        ++b;
        --e;
        quoted = true;
    }
    QString value = decodeText(b, e - b, m_encoding);
    // Windows copies the value with its closing quote into the 255-place
    // buffer and then drops the buffer's last character whenever the quoted
    // text fitted: when the text inside is exactly 254 long, the quote was
    // cut by the buffer and the drop takes a letter instead.
    const qsizetype limit = quoted && value.size() == kMaxValueLength ? kMaxValueLength - 1
                                                                      : kMaxValueLength;
    if (value.size() > limit) {
        qsizetype keep = limit;
        if (value.at(keep - 1).isHighSurrogate())
            --keep;
        value.truncate(keep);
    }
    return value;
}

bool ProfileDocument::hasKey(const QString& section, const QString& key) const {
    const Section* found = findSection(LookupName(section, m_encoding).bytes());
    return found && found->keys.contains(LookupName(key, m_encoding).bytes());
}

namespace {
qsizetype characters(const char* b, const char* e, FileEncoding encoding) {
    if (encoding == FileEncoding::Ansi)
        return e - b;
    qsizetype n = 0; // UTF-8 inside: count every byte that starts a character
    for (const char* p = b; p < e; ++p)
        n += (static_cast<unsigned char>(*p) & 0xC0) != 0x80;
    return n;
}
} // namespace

void ProfileDocument::forEachLine(const std::function<void(const ParsedLine&)>& visit) const {
    ParsedLine out;
    const auto take = [&](const Line& line) {
        ++out.number; // a write that adds a line break parses the text anew
        const LineShape shape = classify(line.data, line.size);
        out.kind = shape.kind == LineKind::Header ? ParsedLine::Kind::Header
                   : shape.kind == LineKind::Key  ? ParsedLine::Kind::Key
                                                  : ParsedLine::Kind::Blank;
        out.name = shape.kind == LineKind::Blank
                       ? QString()
                       : decodeText(shape.nameBegin, shape.nameCut - shape.nameBegin, m_encoding);
        out.hasEquals = shape.equals != nullptr;
        out.valueLength = shape.kind == LineKind::Key
                              ? characters(shape.valueBegin, shape.valueEnd, m_encoding)
                              : 0;
        visit(out);
    };
    for (const Section& section : m_sections) {
        if (section.hasHeader)
            take(section.header);
        for (const Line& line : section.lines)
            take(line);
    }
}

bool ProfileDocument::write(const QString& section, const QString& key, const QString& value) {
    m_lastSection = kNotLookedUp;
    const QByteArray sectionName = callerName(section, m_encoding);
    const QByteArray keyName = callerName(key, m_encoding);
    // The value crosses as a C string too, and loses its leading blanks.
    qsizetype stop = value.indexOf(QChar(0));
    if (stop < 0)
        stop = value.size();
    qsizetype lead = 0;
    while (lead < stop && value[lead].unicode() < 0x80 && isProfileBlank(value[lead].toLatin1()))
        ++lead;
    const QByteArray valueBytes = encodeText(value.mid(lead, stop - lead), m_encoding);

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
    // Parse such a change the way the next reader of the file will.
    if (mayReshape(sectionName, keyName, valueBytes)) {
        m_bytes = text();
        m_textOffset = 0;
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
    Line* before = last >= 0 ? &section.lines[static_cast<std::size_t>(last)]
                             : (section.hasHeader ? &section.header : nullptr);
    if (before && before->end == LineEnd::None)
        before->end = m_style;

    const int pos = last + 1;
    const LineShape shape = classify(keyLine.constData(), keyLine.size());
    const QByteArray folded = foldName(shape.nameBegin, shape.nameCut);
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

QByteArray ProfileDocument::text() const {
    qsizetype total = 0;
    for (const Section& section : m_sections) {
        if (section.hasHeader)
            total += section.header.size + 2;
        for (const Line& line : section.lines)
            total += line.size + 2;
    }
    QByteArray out;
    out.reserve(total);
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

QByteArray ProfileDocument::serialize() const {
    const QByteArray body = text();
    if (m_encoding == FileEncoding::Utf16Le || m_encoding == FileEncoding::Utf16Be)
        return m_mark +
               wtf8ToUtf16(body.constData(), body.size(), m_encoding == FileEncoding::Utf16Be);
    return m_mark + body;
}

} // namespace store::detail
