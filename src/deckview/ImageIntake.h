#pragma once
// Pictures brought into the game's folder: the user is asked before a file of
// the same name and other content is replaced, and told what was converted.

#include <QStringList>

namespace deckview {

// The names in the game's folder of the files given, in their order: a file
// that lies in the folder already and is of a listed kind is taken as it is,
// any other is brought in. Files refused or skipped are left out.
QStringList bringImages(const QStringList& paths);

} // namespace deckview
