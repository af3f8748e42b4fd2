#pragma once
// How many entries an archive's end record declares, read before the archive
// is opened: the reader keeps a note of every entry of the central directory,
// so an archive of millions of entries must be refused before it gets there.

#include <QString>

#include <optional>

namespace pack {

// The count the end record gives, or none when the file has no such record
// (the reader then says what is wrong with it).
std::optional<qint64> declaredEntries(const QString& zip);

} // namespace pack
