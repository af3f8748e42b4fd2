#pragma once
// The name of a step that no code named, made up from what changed.

#include "history/DeckState.h"

namespace history {

QString describeStep(const DeckState& before, const DeckState& after, const Window& rows);

} // namespace history
