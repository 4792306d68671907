#pragma once

#include <string_view>

namespace orvantesco {

/// What must hold of any bytes that are read as a state block. Ends the program where it does not.
void checkStateBytes(std::string_view bytes);

}  // namespace orvantesco
