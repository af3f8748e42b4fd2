#include "properties/PropertyLists.h"

#include "store/profile/ProfileStore.h"
#include "store/profile/TextHelpers.h"

#include <algorithm>

namespace properties {

qint16 listTotal(const QString& file) {
    return Globals::CInt(
        Globals::Val(Globals::ReadProfileValue(Section, QStringLiteral("total"), file)));
}

QString listLine(int i, const QString& file) {
    return Globals::ReadProfileValue(Section, QStringLiteral("list") + QString::number(i), file);
}

int listsToRead(qint16 total) {
    return std::clamp<int>(total, 0, MaxLists);
}

} // namespace properties
