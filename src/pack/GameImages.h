#pragma once
// The image files a game names, as the engine will look for them: the desktop,
// and the back, discard and card images of every deck within the counts.

#include <QString>
#include <QStringList>

namespace pack {

struct GameImages {
    QString folder;    // the [GAME] directory as written
    QStringList names; // each once, in the order the game names them
};

GameImages namedImages(const QString& gameFile);

} // namespace pack
