#include "check/LineIndex.h"

#include "store/ProfileDocument.h"


namespace check {

QString LineIndex::fold(const QString& name) {
    // Most names are folded already; those share the name's text, not a copy.
    qsizetype i = 0;
    while (i < name.size() && !(name[i] >= u'A' && name[i] <= u'Z'))
        ++i;
    if (i == name.size())
        return name;
    QString out = name;
    for (QChar* c = out.data() + i; c != out.data() + out.size(); ++c) {
        if (*c >= u'A' && *c <= u'Z')
            *c = QChar(c->unicode() - u'A' + u'a');
    }
    return out;
}

void LineIndex::build(const store::detail::ProfileDocument& document) {
    m_sections.clear();
    m_firstSection.clear();
    m_sections.emplace_back(); // what stands before the first header
    m_firstSection.insert(QString(), 0);
    using Kind = store::detail::ParsedLine::Kind;
    document.forEachLine([this](const store::detail::ParsedLine& line) {
        if (line.kind == Kind::Header) {
            Section section;
            section.name = line.name;
            section.line = line.number;
            const QString folded = fold(section.name);
            if (!m_firstSection.contains(folded))
                m_firstSection.insert(folded, static_cast<int>(m_sections.size()));
            m_sections.push_back(std::move(section));
        } else if (line.kind == Kind::Key) {
            Section& section = m_sections.back();
            const QString folded = fold(line.name);
            if (!section.firstKey.contains(folded))
                section.firstKey.insert(folded, static_cast<int>(section.keys.size()));
            section.keys.push_back({line.name, line.number, line.valueLength, line.hasEquals});
        }
    });
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
