#pragma once
// Where each section and key of a game file stands, and the raw lines that a
// profile reader would cut or never reach. The lines come from the profile
// store's own parse, so that the check sees exactly what the wizard sees.

#include <QHash>
#include <QString>

#include <vector>

namespace store::detail {
class ProfileDocument;
}

namespace check {

class LineIndex {
public:
    struct Key {
        QString name; // as spelled in the file
        int line = 0;
        qsizetype valueLength = 0;
        bool hasEquals = true; // false for a line that is no key=value
    };
    struct Section {
        QString name; // as spelled in the file
        int line = 0;
        std::vector<Key> keys;
        QHash<QString, int> firstKey; // folded name -> index in keys
    };

    void build(const store::detail::ProfileDocument& document);

    // The first section of that name, as readers take it; nullptr if none.
    const Section* section(const QString& name) const;
    // The line of a key, else of its section, else 0.
    int lineOf(const QString& section, const QString& key = QString()) const;
    bool hasKey(const QString& section, const QString& key) const;
    // For a name already in lower case, on a section already found.
    static bool hasFoldedKey(const Section& section, const QString& foldedKey);

    const std::vector<Section>& sections() const { return m_sections; }

    static QString fold(const QString& name);

private:
    std::vector<Section> m_sections;
    QHash<QString, int> m_firstSection;
};

} // namespace check
