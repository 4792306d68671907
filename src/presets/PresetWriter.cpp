#include "presets/PresetWriter.h"

#include <array>
#include <charconv>

#include "host/EditorPages.h"

namespace orvantesco {
namespace {

constexpr int kSignificantDigits = 6;

std::string textOf(double value) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                 std::chars_format::general, kSignificantDigits);
  return {digits.data(), end.ptr};
}

std::string maskText(std::uint16_t mask) { return std::to_string(mask) + " "; }

std::string tapMasks(const Preset& preset) {
  std::string line;
  for (const auto& mask : preset.tapMask) line += maskText(mask.value_or(0xFFFF));
  return line;
}

std::string stepFxMasks(const Preset& preset) {
  std::string line;
  for (const auto mask : preset.stepFxMask) line += maskText(mask);
  return line;
}

std::string stepModMasks(const Preset& preset) {
  std::string line;
  for (const auto& row : preset.stepModMask) {
    for (const auto mask : row) line += maskText(mask);
  }
  return line;
}

}  // namespace

std::string presetText(const Preset& preset) {
  std::string text = "Orvantesco V. 1.2.0r14 PresetFile!\nPresetVersion: ";
  text += std::to_string(kPresetVersion) + "\n\nADDPARAMS:\n\n";
  text += "DelayTaps\n" + tapMasks(preset) + "\n";
  text += "LastPage\n" + std::to_string(preset.lastPage.value_or(kDelayPage)) + "\n";
  text += "StepFX\n" + stepFxMasks(preset) + "\n";
  text += "StepMod\n" + stepModMasks(preset) + "\n\nEParams:\n";
  for (const PresetValue& param : preset.values) {
    text += param.key + " " + textOf(param.value) + "\n";
  }
  return text;
}

}  // namespace orvantesco
