#pragma once

#include "store/AnsiCodec.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <functional>
#include <vector>

namespace store::detail {

// The characters that Windows skips around names, "=" and values: tab to
// carriage return, the DOS end-of-file mark, and the space.
constexpr bool isProfileBlank(char c) {
    return (c >= '\t' && c <= '\r') || c == '\x1A' || c == ' ';
}

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

// One line of the file as a reader takes it, for tools that must say where a
// section or key stands without a grammar of their own.
struct ParsedLine {
    enum class Kind : quint8 { Blank, Header, Key };
    Kind kind = Kind::Blank;
    int number = 0;        // from 1, counting CR, LF and CR LF as one line end each
    QString name;          // as spelled, without the blanks around it, cut at a NUL
    bool hasEquals = false; // a key line: false for a line that holds no "="
    qsizetype valueLength = 0; // a key line: characters after "=", blanks around dropped
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
    // Whether a read of the key would find a line for it (an empty value is a key).
    bool hasKey(const QString& section, const QString& key) const;
    // Every line in file order, headers and keys with the names a read matches.
    void forEachLine(const std::function<void(const ParsedLine&)>& visit) const;
    // The file's bytes, in the file's own encoding.
    QByteArray serialize() const;

    FileEncoding encoding() const { return m_encoding; }
    // True when the bytes cannot be written back as they came in, so that any
    // save would change more than the keys written.
    bool isBroken() const { return m_broken; }

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
    QByteArray text() const;

    // The text that lines point into: the file's bytes as read, or the text
    // made from them (UTF-16, after a change that reshapes lines).
    QByteArray m_bytes;
    qsizetype m_textOffset = 0; // where the text starts in m_bytes, after the mark
    QByteArray m_mark;          // the byte-order mark the file opens with, if any
    bool m_broken = false;
    FileEncoding m_encoding = FileEncoding::Ansi;
    LineEnd m_style = LineEnd::CrLf;
    std::vector<Section> m_sections;       // [0] holds whatever precedes the first header
    QHash<QByteArray, int> m_sectionIndex; // folded name -> first section of it
    // The section a read looked up last: reads come in runs of one section,
    // such as the cards of a deck. Any change of the sections forgets it.
    mutable QString m_lastSectionName;
    mutable int m_lastSection = kNotLookedUp;
    static constexpr int kNotLookedUp = -2; // -1: looked up and not there
};

} // namespace store::detail
