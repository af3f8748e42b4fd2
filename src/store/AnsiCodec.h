#pragma once

#include <QByteArray>
#include <QString>

namespace store::detail {

// How the text of a profile file maps to QString. Files are Windows-1252 unless
// they open with a byte-order mark; such a file keeps its encoding for good.
// UTF-16 text is held in memory as generalized UTF-8 (see Utf16Codec.h), so
// that one parser serves every encoding.
enum class FileEncoding { Ansi, Utf8, Utf16Le, Utf16Be };

QByteArray encodeText(const QString& text, FileEncoding encoding);
QString decodeText(const char* data, qsizetype size, FileEncoding encoding);

} // namespace store::detail
