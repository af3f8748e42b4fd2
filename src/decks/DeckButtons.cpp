#include "decks/DeckButtons.h"

#include "runtime/Runtime.h"
#include "game/Conversions.h"

namespace decks {

bool deckCountRefused(double v) {
    return v < 0.0 || v > 6.0;
}

bool followDeckCount(const QString& text, const std::array<rt::CommandButton*, 6>& buttons) {
    const double v = conv::Val(text);
    if (deckCountRefused(v)) {
        rt::MsgBox(DeckCountRefused, 0);
        return false;
    }
    const int n = conv::CInt(v);
    for (int i = 1; i <= n; ++i)
        buttons[static_cast<size_t>(i - 1)]->setVisible(true);
    const int m = conv::CInt(v + 1);
    for (int i = m; i <= 6; ++i)
        buttons[static_cast<size_t>(i - 1)]->setVisible(false);
    return true;
}

} // namespace decks
