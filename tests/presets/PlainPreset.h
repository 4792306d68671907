#pragma once

#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvantesco {

/// What another program would make of a preset file: read with the standard's streams alone,
/// brought up to date by a list of rules in the order of their age. It shares nothing with the
/// engine.
struct PlainPreset {
  std::optional<int> version;
  std::array<std::optional<int>, 8> taps{};
  std::array<int, 4> stepFx{};
  std::array<std::array<int, 4>, 2> stepMod{};
  std::optional<int> page;
  std::vector<std::pair<std::string, float>> values;  ///< as they are listed
};

/// Nothing where the text is no preset file.
std::optional<PlainPreset> plainlyRead(const std::string& text);

/// The file that this program's current version writes.
std::string plainlyWritten(const PlainPreset& preset);

/// The values of all keys in their order; nothing for one that is not listed. Not yet held to any
/// range, and without the loss of a tapped mix.
std::vector<std::optional<float>> plainlyMigrated(const PlainPreset& preset,
                                                  const std::vector<std::string>& keys);

/// Whether the feedback of a slot (1..4) is multiplied by 0.7 at the end.
bool losesFeedback(const PlainPreset& preset, char slot);

}  // namespace orvantesco
