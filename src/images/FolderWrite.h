#pragma once
// Writing one whole file into a folder: under a temporary name first, flushed
// to the disk, then given its name, so that a reader never sees half a file
// and a failure leaves nothing behind.

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace images::detail {

enum class Placed { Done, Exists, Failed };

struct PlaceOutcome {
    Placed result = Placed::Failed;
    QString error; // why, when Failed
};

// Writes `bytes` as `dir`/`name`. Without `replace` an existing file of that
// name is never touched, even one that appears while writing (Exists).
PlaceOutcome placeFile(const QString& dir, const QString& name, const QByteArray& bytes,
                       bool replace);

// The entries of `dir` as names, hidden ones included.
QStringList folderNames(const QString& dir);

// The entry of `names` that is `name` to Windows, where the game's folder may
// end up: letter case does not tell files apart there. "" when none.
QString sameNameIn(const QStringList& names, const QString& name);

// Whether `path` is a regular file holding exactly `bytes`.
bool holdsBytes(const QString& path, const QByteArray& bytes);

} // namespace images::detail
