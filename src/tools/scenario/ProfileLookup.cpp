#include "tools/scenario/ProfileLookup.h"

#include "store/ProfileDocument.h"

namespace scenario {

std::optional<QString> findProfileKey(const QByteArray& file, const QString& section,
                                      const QString& key) {
    store::detail::ProfileDocument document;
    document.load(file);
    if (!document.hasKey(section, key))
        return std::nullopt;
    return document.read(section, key);
}

} // namespace scenario
