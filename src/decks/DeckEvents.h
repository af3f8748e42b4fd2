#pragma once
// Who hears of the deck on page 4 coming from and going to its section. The
// load and the save call these and do nothing else with them, so a listener
// cannot change what either does.

#include <QString>
#include <functional>

namespace decks {

struct DeckEvents {
    // Before the page is emptied for `section`, and once it holds that deck.
    std::function<void(const QString& section)> loading;
    std::function<void(const QString& section)> loaded;
    // The page's deck written into `section` of `file`, which may be a scratch copy.
    std::function<void(const QString& section, const QString& file)> saved;
};
DeckEvents& deckEvents();

} // namespace decks
