#pragma once

#include <QByteArray>
#include <QString>

namespace Globals::ProfileDetail {

// How the text of a profile file maps to QString. Files are Windows-1252 unless
// they open with a UTF-8 byte-order mark; such a file stays UTF-8 for good.
enum class FileEncoding { Ansi, Utf8 };

QByteArray encodeText(const QString& text, FileEncoding encoding);
QString decodeText(const char* data, qsizetype size, FileEncoding encoding);

} // namespace Globals::ProfileDetail
