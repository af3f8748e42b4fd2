#pragma once
// A number of decks typed in a box, 0 to 6, and the six buttons that follow it:
// the common decks on page 3 and a player's decks on page 2.

#include "runtime/Controls.h"

#include <array>

namespace decks {

// The deck options that every save of the deck on the page writes "false",
// whatever the Deck Properties dialog wrote last.
const std::array<QString, 2>& keysEverySaveResets();

inline const QString DeckCountRefused = QStringLiteral("Please insert a number from 0 to 6");

// True for a value outside 0 to 6; an empty box or letters count as 0.
bool deckCountRefused(double v);

// The number typed in a box: refused with the message, the buttons staying as
// they are; otherwise the buttons up to it show and those above it hide. A
// fraction rounds as CInt does, so a button between the two keeps its state.
// Returns whether the number was taken.
bool followDeckCount(const QString& text, const std::array<rt::CommandButton*, 6>& buttons);

} // namespace decks
