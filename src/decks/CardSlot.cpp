#include "decks/CardSlot.h"

#include "wizard/Globals.h"

#include <limits>

namespace decks {

qint32 takeCardSlot() {
    using namespace Globals;
    constexpr qint32 limit = std::numeric_limits<qint16>::max();
    if (CardCounter < limit) {
        CardCounter = static_cast<qint16>(CardCounter + 1);
        return CardCounter;
    }
    // The table reaches every slot handed out past the limit, so its end is
    // the next free one.
    const qint32 slot = std::max<qint32>(limit + 1, static_cast<qint32>(CardProps.size()));
    cardProp(slot);
    return slot;
}

} // namespace decks
