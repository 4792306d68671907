#pragma once

#include <string_view>

namespace orvantesco {

/// Whether a fuzz target plays an input: one in sixteen, since playing takes as long as reading a
/// thousand. It depends on the bytes alone, so that what breaks a target breaks it again.
bool isPlayed(std::string_view bytes);

/// What must hold of one effect that takes any bytes as a preset file and then plays: what it
/// sounds like is finite, and what it would save is a file without a problem. The effect lives as
/// long as the program, so that what an input leaves behind meets the next one. Ends the program
/// where a promise is broken.
void checkPresetPlays(std::string_view bytes);

/// The same for state blocks, and for the block that the effect would save.
void checkStatePlays(std::string_view bytes);

}  // namespace orvantesco
