#pragma once
// The names a game's archive may hold. The engine runs on Windows, so a name
// must survive there as well as here, and a name must never reach outside the
// folder the archive goes into.

#include <QByteArray>
#include <QString>

namespace pack {

// Why `component` (one file or folder name, no separator) cannot be a file
// name on Windows, or "" when it can.
QString windowsRefusal(const QString& component);

// An archive entry's name taken apart: "NAME.game" at the top, or "DIR/FILE"
// with the game's image folder. A directory entry "DIR/" has an empty file.
struct EntryPath {
    QString folder; // "" for the game file at the top
    QString file;
};

// Parses the raw bytes of an entry's name; on refusal gives "" parts and puts
// the reason in `why`. `maxBytes` bounds the whole name.
bool parseEntryName(const QByteArray& raw, int maxBytes, EntryPath& out, QString& why);

// Whether the bytes that begin a file (or its name) say it is compressed
// already, so that deflating it again costs time and saves nothing.
bool alreadyCompressed(const QString& name, const QByteArray& head);

// The name a file system that ignores letter case (the engine's) sees.
QString foldedName(const QString& name);

} // namespace pack
