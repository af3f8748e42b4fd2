#pragma once
// Tells a missing key from an empty one, which the store's read gives alike.

#include <QByteArray>
#include <QString>
#include <optional>

namespace scenario {

// The value of the key as ReadProfileValue reads it, or nothing when the file
// holds no line for the key. The file is parsed by the store's own reader, so
// names match by its rules.
std::optional<QString> findProfileKey(const QByteArray& file, const QString& section,
                                      const QString& key);

} // namespace scenario
