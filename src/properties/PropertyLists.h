#pragma once
// The section of the game file that holds the property lists, as every reader
// of them sees it.

#include "game/GameFile.h"

#include <QString>

namespace properties {

inline const QString Section = game::section::propLists();

// The format knows four lists; a larger `total` from a file made by other
// means stops there, so no loop over lists runs longer than that.
inline constexpr int MaxLists = 4;
inline constexpr int NamesPerList = 6;

// CInt(Val()) of `total` in `file`, as read; may be negative or above four.
qint16 listTotal(const QString& file);

// The line of list `i` (from 1).
QString listLine(int i, const QString& file);

// The lists that a reader loops over for a `total`: none below 1, at most four.
int listsToRead(qint16 total);

} // namespace properties
