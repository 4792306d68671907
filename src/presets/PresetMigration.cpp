#include "presets/PresetMigration.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string_view>

#include "params/ParamIndex.h"

namespace orvantesco {
namespace {

// The first file versions that need no migration of their kind.
constexpr int kPresetLevelsInDb = 4;
constexpr int kPresetMoreNoteLengths = 5;
constexpr int kPresetMoreWaves = 6;
constexpr int kPresetMoreFilters = 9;
constexpr int kPresetMorePreTypes = 12;
constexpr int kPresetMoreFeedbackTypes = 13;
constexpr int kPresetQuietTappedMix = 14;

constexpr double kDbPerNeper = 8.685889638065037;

constexpr std::array kTimebaseOfMenu{0, 2, 3, 4, 8, 9, 10};
constexpr std::array kTapTimebaseOfMenu{0, 1, 2, 3, 4, 8, 9, 10};

bool within(int index, int base) noexcept { return index >= base && index < base + numSlots; }

/// Entries that a menu got: those behind `last` moved up by `count`.
float moved(float position, float last, float count) noexcept {
  return position > last ? position + count : position;
}

/// A position of an old menu, held to its entries, and the value that the entry has now.
template <std::size_t Count>
float entryOf(const std::array<int, Count>& menu, float position) noexcept {
  const bool isNumber = !std::isnan(position);
  const float held = isNumber ? std::clamp(position, 0.0f, static_cast<float>(Count - 1)) : 0.0f;
  return static_cast<float>(menu[static_cast<std::size_t>(held)]);
}

float withTypesOfFeedback(int version, float v) noexcept {
  if (version < kPresetMoreFeedbackTypes) v = moved(v, 12.0f, 1.0f);
  return version < kPresetMoreFilters ? moved(v, 9.0f, 1.0f) : v;
}

float withTypesOfOtherStages(int version, float v) noexcept {
  if (version < kPresetMorePreTypes) v = moved(v, 17.0f, 1.0f);
  return version < kPresetMoreFilters ? moved(v, 10.0f, 2.0f) : v;
}

/// The third slot's timebase was never part of this: files of that age keep its number as it is.
bool hasOldTimebase(int index) noexcept {
  return within(index, kTimebase) && index != kTimebase + 2;
}

float ofNoteLengths(int index, float v) noexcept {
  if (hasOldTimebase(index)) return entryOf(kTimebaseOfMenu, v);
  return within(index, kTapTimebase) ? entryOf(kTapTimebaseOfMenu, v) : v;
}

float today(int version, int index, float v) noexcept {
  if (within(index, kFxTypeFeedback)) return withTypesOfFeedback(version, v);
  if (within(index, kFxTypePre) || within(index, kFxTypePost)) {
    return withTypesOfOtherStages(version, v);
  }
  if (within(index, kLfoWave) && version < kPresetMoreWaves) return moved(v, 18.0f, 4.0f);
  if (within(index, kLevel) && version < kPresetLevelsInDb) {
    return static_cast<float>(std::log(static_cast<double>(v)) * kDbPerNeper);
  }
  return version < kPresetMoreNoteLengths ? ofNoteLengths(index, v) : v;
}

/// The values of a preset by their keys, each to be taken once, in the order of the file. Sorted,
/// so that no choice of keys can make a foreign file slow.
class ValueList {
 public:
  explicit ValueList(const std::vector<PresetValue>& values) {
    for (const PresetValue& value : values) byKey[value.key].values.push_back(&value);
  }

  /// Null where there is none left.
  const PresetValue* take(std::string_view key) {
    const auto found = byKey.find(key);
    if (found == byKey.end()) return nullptr;
    Queue& queue = found->second;
    return queue.taken < queue.values.size() ? queue.values[queue.taken++] : nullptr;
  }

 private:
  struct Queue {
    std::vector<const PresetValue*> values;
    std::size_t taken = 0;
  };
  std::map<std::string_view, Queue> byKey;
};

bool holds(const MigratedValues& values, int index, float wanted) {
  return values.byIndex[static_cast<std::size_t>(index)] == wanted;
}

}  // namespace

MigratedValues migrated(const Preset& preset, const ParamKeys& keys) {
  ValueList listed(preset.values);
  MigratedValues values;
  for (int index = 0; const std::string& key : keys) {
    std::optional<float> value;
    const PresetValue* line = listed.take(key);
    if (line != nullptr) value = today(preset.version, index, static_cast<float>(line->value));
    values.byIndex.push_back(value);
    values.lineByIndex.push_back(line != nullptr ? line->line : 0);
    ++index;
  }
  if (preset.version >= kPresetQuietTappedMix) return values;
  for (int slot = 0; slot < numSlots; ++slot) {
    values.quietenFeedback[static_cast<std::size_t>(slot)] =
        holds(values, kDelayMode + slot, kTappedMode) &&
        holds(values, kDelayRoute + slot, kMixRoute);
  }
  return values;
}

}  // namespace orvantesco
