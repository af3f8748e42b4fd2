#pragma once

#include <QByteArray>
#include <QString>

namespace store::detail {

// UTF-16 files are parsed as generalized UTF-8 ("WTF-8"): UTF-8 that also
// encodes a lone surrogate, as three bytes. The mapping is one to one for any
// sequence of 16-bit units, so a file goes out unit for unit as it came in,
// even one whose surrogates do not pair, which Windows reads without complaint.

QByteArray utf16ToWtf8(const char* data, qsizetype size, bool bigEndian);
QByteArray wtf8ToUtf16(const char* data, qsizetype size, bool bigEndian);

QByteArray toWtf8(const QString& text);
QString fromWtf8(const char* data, qsizetype size);

} // namespace store::detail
