// Reading a profile document: its bytes split into lines, the index of its
// sections and keys, and the reads through that index.

#include "store/ProfileDocument.h"

#include "store/ProfileLine.h"
#include "store/Utf16Codec.h"

namespace store::detail {

namespace {

constexpr char kUtf8Mark[] = "\xEF\xBB\xBF";

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

// Of two sections or keys of one name, the first one wins.
void addFirst(QHash<QByteArray, int>& index, QByteArray&& name, int position) {
    if (!index.contains(name))
        index.insert(std::move(name), position);
}

} // namespace

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
    const qsizetype limit =
        quoted && value.size() == kMaxValueLength ? kMaxValueLength - 1 : kMaxValueLength;
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

} // namespace store::detail
