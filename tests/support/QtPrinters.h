#pragma once
// How GoogleTest prints Qt's texts in a failure: as text, not as bytes.
// Every test target includes this first (see tests/CMakeLists.txt).

#include <QString>
#include <QStringList>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& list, std::ostream* os) {
    *os << '{';
    for (qsizetype i = 0; i < list.size(); ++i)
        *os << (i ? ", \"" : " \"") << list[i].toStdString() << '"';
    *os << " }";
}
