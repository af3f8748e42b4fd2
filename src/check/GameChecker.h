#pragma once
// The whole-game check: reads one game file and its image directory and says
// what will not come out as the designer meant. It never writes anything.

#include "check/Finding.h"

namespace check {

// The image directory is `directory` of [GAME], below the game file's folder.
GameReport checkGame(const QString& gameFile);

} // namespace check
