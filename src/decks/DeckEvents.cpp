#include "decks/DeckEvents.h"

namespace decks {

DeckEvents& deckEvents() {
    static DeckEvents events;
    return events;
}

} // namespace decks
