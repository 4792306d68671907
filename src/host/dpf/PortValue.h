#pragma once

#include "core/Orvantesco.h"

namespace orvantesco {

// The value of a parameter as a port carries it, in single precision.

/// The number that a person meant: the shortest decimal that reads as this float. 33.3 stands in a
/// port as 33.299999237; taken at its word, a delay would sit beside the grid of a render that was
/// given 33.3. Any thread; neither locks nor allocates.
double decimalOf(float value) noexcept;

/// The parameter's value, rounded to a float.
float portValueOf(const IParam& param) noexcept;

/// Brings a port's value into the engine: held to the range, in whole steps where the parameter
/// has them. A port that stands where the parameter stands changes nothing, so that a state which
/// was restored in full precision keeps it. Any thread; neither locks nor allocates.
void takePortValue(Orvantesco& effect, int index, float value) noexcept;

}  // namespace orvantesco
