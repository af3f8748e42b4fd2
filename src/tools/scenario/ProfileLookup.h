#pragma once
// An independent reading of a profile file, to tell a missing key from an
// empty one: the store's own read gives "" for both.

#include <QByteArray>
#include <QString>
#include <optional>

namespace scenario {

// The raw value of the key (after "=", blanks around it removed), or nothing
// when the file has no such key. Section and key names match without regard
// to ASCII case, blanks around them do not count, a NUL ends them, and the
// first section of a name and the first key in it win. A line without "=" is a
// key with no value; lines before the first header make the section "". A
// UTF-16 file gives its value as UTF-8.
std::optional<QByteArray> findProfileKey(const QByteArray& file, const QString& section,
                                         const QString& key);

} // namespace scenario
