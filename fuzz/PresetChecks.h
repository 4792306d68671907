#pragma once

#include <string_view>

namespace orvantesco {

/// What must hold of any bytes that are read as a preset file. Ends the program where it does not.
void checkPresetBytes(std::string_view bytes);

}  // namespace orvantesco
