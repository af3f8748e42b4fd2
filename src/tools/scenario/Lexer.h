#pragma once
// One line of a scenario split into words, strings and heredoc marks.

#include <QByteArray>
#include <QString>
#include <vector>

namespace scenario::lexer {

struct Token {
    enum Kind { Word, String, Heredoc } kind = Word;
    QByteArray bytes; // a string's bytes, a heredoc's tag, a word as written
    QString word() const { return QString::fromLatin1(bytes); }
};

// A line that cannot be read; the reader adds the line number.
struct Error {
    QString message;
};

// Splits one line. A string's escapes are resolved to bytes; "<<TAG" becomes
// a heredoc mark holding TAG. Throws Error.
std::vector<Token> tokenize(const QByteArray& line);

} // namespace scenario::lexer
