#include "check/Finding.h"

#include <algorithm>

namespace check {

int GameReport::count(Severity severity) const {
    return static_cast<int>(
        std::count_if(findings.begin(), findings.end(),
                      [severity](const Finding& f) { return f.severity == severity; }));
}

QString severityName(Severity severity) {
    switch (severity) {
    case Severity::Error:
        return QStringLiteral("error");
    case Severity::Warning:
        return QStringLiteral("warning");
    case Severity::Note:
        break;
    }
    return QStringLiteral("note");
}

} // namespace check
