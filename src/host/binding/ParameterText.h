#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "params/ParamBank.h"

namespace orvantesco {

// Values as a host's lists and automation lanes show them, and the way back. Every value has a
// text, and that text reads back as a value that has it too. Control threads: these allocate.
//
// Texts are the bank's with their units, "500.00 ms". The type of an effect has the names that its
// stage offers, as in the editor, so that what a person chooses is what runs.

/// The text of a value in the parameter's own unit. Any number; what is out of range shows the end
/// of the range. Empty for an index that no parameter has.
std::string parameterText(const ParamBank& bank, int index, double value);

/// The same of a normalised value.
std::string normalizedParameterText(const ParamBank& bank, int index, double normalized);

/// The value that a person means: a text as above, with or without its unit, or a number in the
/// parameter's unit. Nothing where it is neither. The result lies in the parameter's range.
std::optional<double> parameterValue(const ParamBank& bank, int index, std::string_view text);

/// The same, normalised.
std::optional<double> normalizedParameterValue(const ParamBank& bank, int index,
                                               std::string_view text);

}  // namespace orvantesco
