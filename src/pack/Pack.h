#pragma once
// One ZIP file that any unzip tool reads, holding a game: NAME.game at the top
// and its image folder beside it.

#include <QString>
#include <QStringList>

namespace pack {

struct PackResult {
    bool ok = false;
    QString error;       // why nothing was written, when not ok
    QStringList packed;  // the entries, as named in the archive
    QStringList missing; // images the game names that its folder lacks
    QStringList skipped; // "name: reason" for files no archive of ours may hold
    qint64 bytes = 0;    // the archive's size
};

// Packs `gameFile` into `outZip`, replacing it only once the new archive is
// complete. With `allImages` every file of the image folder goes in, not only
// those the game names. Missing images are listed; the archive is still made.
PackResult packGame(const QString& gameFile, const QString& outZip, bool allImages);

} // namespace pack
