#pragma once
// How a value read from the program meets a value written in a scenario.

#include "tools/scenario/Script.h"

#include <QVariant>

namespace scenario {

// Texts compare exactly; numbers by value; a boolean also equals -1 (True) and
// 0 (False), either way round. A text never equals a number.
bool sameValue(const QVariant& actual, const Value& expected);
// The value as a scenario would write it.
QString showVariant(const QVariant& value);

} // namespace scenario
