#include "decks/CardEntry.h"

#include "store/profile/TextHelpers.h"

CardEntry readCardEntry(const QString& entry) {
    if (!entry.startsWith(QLatin1String("(x")))
        return {1, entry};
    const qsizetype close = entry.indexOf(QLatin1Char(')'));
    if (close < 0)
        return {1, entry};
    return {Globals::CInt(Globals::Val(entry.mid(2))), Globals::Trim(entry.mid(close + 1))};
}
