#pragma once
// A number of decks typed in a box, 0 to 6, and the six buttons that follow it:
// the common decks on page 3 and a player's decks on page 2.

#include "runtime/Controls.h"

#include <array>

namespace decks {

inline const QString DeckCountRefused = QStringLiteral("Please insert a number from 0 to 6");

// True for a value outside 0 to 6; an empty box or letters count as 0.
bool deckCountRefused(double v);

// Shows the buttons up to the number and hides those above it. A fraction
// rounds as CInt does, so a button between the two limits keeps its state.
void followDeckCount(const std::array<rt::CommandButton*, 6>& buttons, double v);

} // namespace decks
