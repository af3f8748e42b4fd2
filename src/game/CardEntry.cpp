#include "game/CardEntry.h"

#include "game/Conversions.h"

#include <algorithm>

CardEntryParts cardEntryParts(QStringView entry) {
    if (!entry.startsWith(u"(x"))
        return {1.0, entry};
    // A plain search: entries are a few letters long, and there are thousands.
    const auto close = std::find(entry.begin(), entry.end(), QChar(u')'));
    if (close == entry.end())
        return {1.0, entry};
    const QStringView count = entry.mid(2);
    QStringView name = entry.mid(close - entry.begin() + 1);
    while (name.startsWith(u' '))
        name = name.mid(1);
    while (name.endsWith(u' '))
        name.chop(1);
    return {conv::Val(QString::fromRawData(count.data(), count.size())), name};
}

CardEntry readCardEntry(const QString& entry) {
    const CardEntryParts parts = cardEntryParts(entry);
    return {conv::CInt(parts.copies), parts.name.toString()};
}
