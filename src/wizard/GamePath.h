#pragma once
// Where the game file is: built afresh from the name box at every access, so
// the text in that box decides which game is meant.

#include <QString>

namespace Globals {

// App.Path, "/", the text of NameTXT and ".game".
QString GameFilePath();

// True for an ordinary file; "" is never one, and * and ? match as in Dir.
bool FileExists(const QString& path);

} // namespace Globals
