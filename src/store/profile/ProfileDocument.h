#pragma once

#include "store/profile/AnsiCodec.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <vector>

namespace Globals::ProfileDetail {

enum class LineEnd : quint8 { None, Lf, Cr, CrLf };

// One line of the file. It points into the bytes the file was parsed from
// until it is rewritten; then it owns its text.
struct Line {
    const char* data = nullptr;
    qsizetype size = 0;
    LineEnd end = LineEnd::None;
    QByteArray own;

    void setText(QByteArray text);
};

// The parsed image of one profile file. Every byte that came in goes out again
// unless a write replaced the line that held it, so that comments, unknown keys,
// spacing and line ends survive any number of saves.
class ProfileDocument {
public:
    static constexpr qsizetype kMaxValueLength = 254;

    void load(const QByteArray& bytes);

    QString read(const QString& section, const QString& key) const;
    // True when the file text changed; writing the value a key already holds
    // changes nothing.
    bool write(const QString& section, const QString& key, const QString& value);
    QByteArray serialize() const;

    FileEncoding encoding() const { return m_encoding; }

private:
    struct Section {
        bool hasHeader = false;
        Line header;
        std::vector<Line> lines;
        QHash<QByteArray, int> keys; // folded name -> first line holding it
    };

    void parse(LineEnd keepStyle);
    const Section* findSection(const QByteArray& foldedName) const;
    void appendSection(const QByteArray& name, const QByteArray& keyLine);
    void insertKeyLine(Section& section, QByteArray keyLine);
    QByteArray lineEndBytes() const;

    QByteArray m_bytes;
    bool m_bom = false;
    FileEncoding m_encoding = FileEncoding::Ansi;
    LineEnd m_style = LineEnd::CrLf;
    std::vector<Section> m_sections;       // [0] holds whatever precedes the first header
    QHash<QByteArray, int> m_sectionIndex; // folded name -> first section of it
};

} // namespace Globals::ProfileDetail
