#include "properties/PropertyLists.h"

#include "store/ProfileStore.h"
#include "game/Conversions.h"

#include <algorithm>

namespace properties {

qint16 listTotal(const QString& file) {
    return conv::CInt(
        conv::Val(store::ReadProfileValue(Section, QStringLiteral("total"), file)));
}

QString listLine(int i, const QString& file) {
    return store::ReadProfileValue(Section, QStringLiteral("list") + QString::number(i), file);
}

int listsToRead(qint16 total) {
    return std::clamp<int>(total, 0, MaxLists);
}

} // namespace properties
