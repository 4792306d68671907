#pragma once

#include <string_view>

#include "params/ParamBank.h"

namespace orvantesco::cli {

/// A parameter and the value that it is to have, in its own unit.
struct ParameterSetting {
  int index = 0;
  double value = 0.0;
};

/// Reads a parameter's name and value against the range and the texts that it has now. For an
/// effect type the texts are the menu names that its stage offers. Throws a `Failure` that says
/// what would have been accepted.
ParameterSetting parseSetting(const ParamBank& bank, std::string_view name, std::string_view value);

/// Reads "NAME=VALUE".
ParameterSetting parseAssignment(const ParamBank& bank, std::string_view text);

}  // namespace orvantesco::cli
