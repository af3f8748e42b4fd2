#include "decks/DeckButtons.h"

#include "runtime/Runtime.h"
#include "store/profile/TextHelpers.h"

namespace decks {

bool deckCountRefused(double v) {
    return v < 0.0 || v > 6.0;
}

bool followDeckCount(const QString& text, const std::array<rt::CommandButton*, 6>& buttons) {
    const double v = Globals::Val(text);
    if (deckCountRefused(v)) {
        rt::MsgBox(DeckCountRefused, 0);
        return false;
    }
    const int n = Globals::CInt(v);
    for (int i = 1; i <= n; ++i)
        buttons[static_cast<size_t>(i - 1)]->setVisible(true);
    const int m = Globals::CInt(v + 1);
    for (int i = m; i <= 6; ++i)
        buttons[static_cast<size_t>(i - 1)]->setVisible(false);
    return true;
}

} // namespace decks
