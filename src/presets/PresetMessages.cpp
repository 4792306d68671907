#include "presets/PresetMessages.h"

namespace orvantesco {

const char* textOf(PresetMessage message) noexcept {
  switch (message) {
    case PresetMessage::noError:
      break;
    case PresetMessage::outOfMemory:
      return "Could not allocate enough memory!\n"
             "Please close and restart ORVANTESCO after freeing up space!";
    case PresetMessage::notInUserFolder:
      return "Preset was not saved to USER PRESET Folder!\n"
             "Preset won't be visible in the Preset Menu.";
    case PresetMessage::noPresetsFolder:
      return "Could not find the Presets folder!\nPlease re-install ORVANTESCO!";
    case PresetMessage::cannotWrite:
      return "Could not write Preset file!\nPlease re-install ORVANTESCO!";
    case PresetMessage::factoryFolder:
      return "Can't write into Fatory Preset Folder!\nPlease save to User Preset Folder!";
    case PresetMessage::newerState:
      return "Saved data is newer than the actual ORVANTESCO version!\n"
             "Can't restore saved state!";
  }
  return "No Error";
}

}  // namespace orvantesco
