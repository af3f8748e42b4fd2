#pragma once
// Cases of the differential test of the profile store against the Windows
// profile functions: a file as it stands before, and the calls made on it.

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace compat {

// One call, with its texts as the single-byte strings that the Windows
// functions take (Windows-1252).
struct Call {
    enum Kind { Read, Write } kind = Read;
    QByteArray section;
    QByteArray key;
    QByteArray value;
};

struct Case {
    QString name;
    std::optional<QByteArray> before; // nothing: no file at all
    std::vector<Call> calls;
    // Set when the case shows a difference that is kept on purpose: names the
    // entry of the README's list that explains it.
    QString listed;
};

std::vector<Case> handCases();
std::vector<Case> randomCases(quint32 seed, int count);

// Helpers for writing cases.
Call read(const QByteArray& section, const QByteArray& key);
Call write(const QByteArray& section, const QByteArray& key, const QByteArray& value);
QByteArray utf16Le(const QString& text);
QByteArray utf16Be(const QString& text);

} // namespace compat
