#pragma once

namespace orvantesco {

/// The messages about presets and state that an editor shows to the user. The numbers are those
/// that are reported.
enum class PresetMessage {
  noError = 0,
  outOfMemory = 1,
  notInUserFolder = 3,
  noPresetsFolder = 4,
  cannotWrite = 5,
  factoryFolder = 6,
  newerState = 7,
};

/// The text of a message, with "\n" where a line of the message page ends.
const char* textOf(PresetMessage message) noexcept;

}  // namespace orvantesco
