// Writing a profile document: a key's line changed in place or added where a
// reader finds it, and the text put back together in the file's encoding.

#include "store/ProfileDocument.h"

#include "store/ProfileLine.h"
#include "store/Utf16Codec.h"

namespace store::detail {

namespace {

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
