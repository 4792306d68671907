#include "presets/PlainPreset.h"

#include <algorithm>
#include <cmath>
#include <locale>
#include <sstream>

namespace orvantesco {
namespace {

using Values = std::vector<std::pair<std::string, float>>;

/// A read that fails leaves its target and does not end the reading of what follows.
bool readInt(std::istream& in, int& target) {
  int number = 0;
  const bool read = static_cast<bool>(in >> number);
  if (read) target = number & 0xFFFF;
  in.clear();
  return read;
}

void readTaps(std::istream& in, PlainPreset& preset) {
  for (auto& mask : preset.taps) {
    int number = 0;
    if (readInt(in, number)) mask = number;
  }
}

void readStepMods(std::istream& in, PlainPreset& preset) {
  const bool inPairs = preset.version && *preset.version < 8;
  for (auto& row : preset.stepMod) {
    for (std::size_t slot = 0; slot < 4; ++slot) {
      int first = inPairs ? 0 : row[slot];
      const bool hasFirst = readInt(in, first);
      if (!inPairs) {
        row[slot] = first;
        continue;
      }
      int second = 0;
      const bool hasSecond = readInt(in, second);
      if (!hasFirst && !hasSecond) continue;
      row[slot] = first | second;
      preset.stepFx[slot] = 0xFFFF;
    }
  }
}

void readSection(std::istream& in, const std::string& token, PlainPreset& preset) {
  if (token == "DelayTaps") readTaps(in, preset);
  if (token == "StepMod") readStepMods(in, preset);
  if (token == "StepFX") {
    for (int& mask : preset.stepFx) readInt(in, mask);
  }
  if (token == "LastPage") {
    int page = 0;
    if (in >> page) preset.page = page;
    in.clear();
  }
}

void readValues(std::istream& in, PlainPreset& preset) {
  std::string name;
  float value = 0.0f;
  while (in >> name && in >> value) {
    const bool isDepth = name == "LFOFreqModDepth1" || name == "LFOFreqModDepth2" ||
                         name == "LFOFreqModDepth3" || name == "LFOFreqModDepth4";
    if (*preset.version < 3 && isDepth) {
      value = static_cast<float>(double{value} * 0.278207956148936);
    }
    preset.values.emplace_back(name, value);
  }
}

bool isOneOf(const std::string& key, const std::string& front, const std::string& back,
             const std::string& slots = "1234") {
  for (const char slot : slots) {
    if (key == front + slot + back) return true;
  }
  return false;
}

float listed(const std::vector<int>& list, float v) {
  const int place = std::clamp(static_cast<int>(v), 0, static_cast<int>(list.size()) - 1);
  return static_cast<float>(list[static_cast<std::size_t>(place)]);
}

float migrated(int version, const std::string& key, float v) {
  const bool isFeedback = isOneOf(key, "FX", "FB");
  const bool isOther = isOneOf(key, "FX", "PR") || isOneOf(key, "FX", "PO");
  if (version < 13 && isFeedback && v > 12) v += 1;
  if (version < 12 && isOther && v > 17) v += 1;
  if (version < 9 && isOther && v > 10) v += 2;
  if (version < 9 && isFeedback && v > 9) v += 1;
  if (version < 6 && isOneOf(key, "LFOWave", "") && v > 18) v += 4;
  if (version < 5 && isOneOf(key, "Timebase", "", "124")) v = listed({0, 2, 3, 4, 8, 9, 10}, v);
  if (version < 5 && isOneOf(key, "TapTimebase", "")) v = listed({0, 1, 2, 3, 4, 8, 9, 10}, v);
  if (version < 4 && isOneOf(key, "Level", "")) {
    v = static_cast<float>(std::log(double{v}) * 8.685889638065037);
  }
  return v;
}

std::optional<float> taken(Values& values, const std::string& key) {
  const auto found = std::find_if(values.begin(), values.end(),
                                  [&](const auto& value) { return value.first == key; });
  if (found == values.end()) return std::nullopt;
  const float value = found->second;
  values.erase(found);
  return value;
}

}  // namespace

std::optional<PlainPreset> plainlyRead(const std::string& text) {
  std::istringstream in(text);
  in.imbue(std::locale::classic());
  std::string token;
  if (!(in >> token) || token != "Orvantesco") return std::nullopt;
  PlainPreset preset;
  for (int word = 0; word < 4; ++word) in >> token;
  int version = 0;
  if (in >> version) preset.version = version;
  in.clear();
  in >> token;
  for (int pass = 0; token != "EParams:" && pass <= 1094; ++pass) {
    readSection(in, token, preset);
    token.clear();
    in >> token;
  }
  if (preset.version && *preset.version >= 0) readValues(in, preset);
  return preset;
}

std::string plainlyWritten(const PlainPreset& preset) {
  std::ostringstream out;
  out.imbue(std::locale::classic());
  out << "Orvantesco"
      << " V. "
      << "1.2.0r14"
      << " PresetFile!"
      << "\n";
  out << "PresetVersion: " << 14 << "\n\n"
      << "ADDPARAMS:"
      << "\n\n"
      << "DelayTaps"
      << "\n";
  for (const auto& mask : preset.taps) out << *mask << " ";
  out << "\nLastPage\n" << *preset.page << "\nStepFX\n";
  for (const int mask : preset.stepFx) out << mask << " ";
  out << "\nStepMod\n";
  for (const auto& row : preset.stepMod) {
    for (const int mask : row) out << mask << " ";
  }
  out << "\n\n"
      << "EParams:"
      << "\n";
  for (const auto& [key, value] : preset.values) out << key << " " << double{value} << "\n";
  return out.str();
}

std::vector<std::optional<float>> plainlyMigrated(const PlainPreset& preset,
                                                  const std::vector<std::string>& keys) {
  Values left = preset.values;
  std::vector<std::optional<float>> values;
  for (const std::string& key : keys) {
    std::optional<float> value = taken(left, key);
    if (value) value = migrated(*preset.version, key, *value);
    values.push_back(value);
  }
  return values;
}

bool losesFeedback(const PlainPreset& preset, char slot) {
  Values left = preset.values;
  const auto mode = taken(left, std::string("DelayMode") + slot);
  const auto route = taken(left, std::string("DelayRoute") + slot);
  return *preset.version < 14 && mode == 3.0f && route == 6.0f;
}

}  // namespace orvantesco
