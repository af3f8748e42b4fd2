#pragma once
// How GoogleTest prints Qt's texts, alone or in a list, in a failure and in a
// message after `<<`: as text, not as bytes. Every test target includes this
// first (see tests/CMakeLists.txt).

#include <QString>

#include <ostream>

inline std::ostream& operator<<(std::ostream& os, const QString& text) {
    return os << text.toStdString();
}

inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text << '"';
}
