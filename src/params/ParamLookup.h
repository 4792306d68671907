#pragma once

#include <string_view>
#include <vector>

#include "params/ParamBank.h"
#include "params/ParamError.h"

namespace orvantesco {

/// The index of a parameter that a person names: by its name ("Delay TimeL 1"), by its key
/// (DelayTimeL1), both without regard to case and blanks, or by "#INDEX". Where two parameters
/// share a name it means the first; the index reaches the other. The error names the closest keys.
OrParamError<int> findParam(const ParamBank& bank, std::string_view text);

/// The indices of the parameters whose keys are closest to a text, nearest first.
std::vector<int> closestParams(const ParamBank& bank, std::string_view text, int count = 3);

}  // namespace orvantesco
