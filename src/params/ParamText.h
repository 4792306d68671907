#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "params/IParam.h"
#include "params/Labels.h"
#include "params/ParamError.h"

namespace orvantesco {

// Values as people and hosts see and write them. Control threads: these operations allocate. They
// read the record as it stands, so the texts of `kLfoRate` are those of its present mode.

/// The value with its unit: "500.00 ms", "FORWARD".
std::string displayText(const IParam& param, double value);

/// Reads a value as a person writes it: a number in the parameter's own unit, a display text, or
/// "n:X" for the normalised X in 0..1. What reads as a number is the number; "t:TEXT" is always the
/// display text. Upper and lower case are the same. Discrete parameters take the nearest step.
///
/// A `menu` replaces the display texts: its entry i stands for the value i, and the parameter
/// takes no value beyond it. Effect types need one, since what their stages offer is a matter of
/// the effect catalogue.
///
/// An error names the parameter and what would be accepted, the range for instance.
OrParamError<double> parseValue(const IParam& param, std::string_view text, LabelList menu = {});

/// Reads what a host shows: the way back from `displayText`, with or without the unit. Here a
/// display text comes before a number, since the tap count 7 is shown as "8". A number out of range
/// becomes the end of the range. Nothing for a text that is neither.
std::optional<double> valueOfDisplayText(const IParam& param, std::string_view text);

/// The range and unit as an error shows them: "1..4000 ms".
std::string rangeText(const IParam& param);

}  // namespace orvantesco
