#include "decks/DeckButtons.h"

#include "store/profile/TextHelpers.h"

namespace decks {

bool deckCountRefused(double v) {
    return v < 0.0 || v > 6.0;
}

void followDeckCount(const std::array<rt::CommandButton*, 6>& buttons, double v) {
    const int n = Globals::CInt(v);
    for (int i = 1; i <= n; ++i)
        buttons[static_cast<size_t>(i - 1)]->setVisible(true);
    const int m = Globals::CInt(v + 1);
    for (int i = m; i <= 6; ++i)
        buttons[static_cast<size_t>(i - 1)]->setVisible(false);
}

} // namespace decks
