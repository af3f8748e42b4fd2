#pragma once
// The findings as a person reads them in a terminal or an editor, and as one
// JSON document for tools.

#include "check/Finding.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace check {

// "FILE:LINE: severity: message", one a line.
QString findingLine(const GameReport& report, const Finding& finding);
// "2 errors, 1 warning, 0 notes in 3 files".
QString summaryLine(const std::vector<GameReport>& reports);
QByteArray toJson(const std::vector<GameReport>& reports);
QString whereName(Where where);

} // namespace check
