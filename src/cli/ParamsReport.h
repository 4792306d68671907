#pragma once

#include <string>
#include <string_view>

#include "params/ParamBank.h"

namespace orvantesco::cli {

/// The parameters whose name or key contains `match`, without regard to case and blanks; all for an
/// empty text. One JSON document with a line break at its end. "labels" are the display texts;
/// an effect type has its stage's menu as "menu" besides, which is what values are chosen from.
std::string paramsJson(const ParamBank& bank, std::string_view match);

/// The same for reading: one line for each parameter with index, name, default, range and choices.
std::string paramsTable(const ParamBank& bank, std::string_view match);

}  // namespace orvantesco::cli
