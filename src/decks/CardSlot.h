#pragma once
// Slots of CardProps for the rows of the open deck.

#include <QtGlobal>

namespace decks {

// Hands out the slot of a new row: CardCounter plus 1, which CardCounter then
// holds. Once the counter stands at its 16-bit limit it stays there and the
// slots go on past the end of the table, so that no row is refused and no two
// rows ever share a slot.
qint32 takeCardSlot();

} // namespace decks
