#pragma once
// A game's archive brought into a folder. The archive is hostile until proven
// otherwise: every entry is checked before anything of it is kept, and the
// folder changes only once all of it has been read.

#include <QString>
#include <QStringList>

#include <functional>

namespace pack {

// Far above any real game, low enough that a bomb stops early.
struct Limits {
    int maxEntries = 20000;
    int maxNameBytes = 240;
    qint64 maxEntryBytes = qint64(1) << 30;
    qint64 maxTotalBytes = qint64(4) << 30;
    // Past `ratioFrom` bytes an entry may not have expanded more than
    // `maxRatio` times what it took in the archive: a flat BMP deflates a
    // thousandfold, but never to tens of megabytes.
    qint64 ratioFrom = qint64(32) << 20;
    double maxRatio = 100;
};

struct Preview {
    bool ok = false;
    QString error;        // "ENTRY: reason" when refused
    QString gameName;     // without .game
    QString folder;       // "" when the archive holds no images
    QStringList files;    // what it would create, relative to the target
    QStringList existing; // those of them the target already holds
    qint64 bytes = 0;
};

// Reads the whole archive through the same checks as an unpack, writing nothing.
Preview previewArchive(const QString& zip, const QString& target, const Limits& limits = {});

enum class Choice { Replace, KeepBoth, Cancel };

struct Conflicts {
    QStringList names;    // relative to the target, content differing
    QString keepBothGame; // the game's name under Keep both
    QString keepBothFolder;
};
using ConflictHandler = std::function<Choice(const Conflicts&)>;

struct UnpackResult {
    enum Status { Done, Refused, Cancelled, Failed };
    Status status = Failed;
    QString error;
    QString gameFile;      // the game now in the target
    QStringList written;   // files created or replaced, relative to the target
    QStringList unchanged; // files the target held already as they are
};

// Extracts `zip` into `target`. Conflicts go to `onConflict`; without one they
// cancel. First finishes or removes what a killed unpack left there.
UnpackResult unpackArchive(const QString& zip, const QString& target,
                           const ConflictHandler& onConflict, const Limits& limits = {});

} // namespace pack
