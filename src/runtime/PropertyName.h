#pragma once
// Property names as the tools spell them.

#include <QString>

namespace rt {

inline bool is(const QString& a, const char* b) {
    return a == QLatin1String(b);
}

} // namespace rt
