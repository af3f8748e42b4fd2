#include "game/CardEntry.h"

#include "game/Conversions.h"

CardEntry readCardEntry(const QString& entry) {
    if (!entry.startsWith(QLatin1String("(x")))
        return {1, entry};
    const qsizetype close = entry.indexOf(QLatin1Char(')'));
    if (close < 0)
        return {1, entry};
    return {conv::CInt(conv::Val(entry.mid(2))), conv::Trim(entry.mid(close + 1))};
}
