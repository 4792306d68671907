#include "presets/PresetCheck.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "params/ParamText.h"
#include "presets/PresetMigration.h"

namespace orvantesco {
namespace {

constexpr float kLastNote = 7.0f;

/// What an LFO's rate may be depends on whether it is a note.
bool isNote(const MigratedValues& values, int index) {
  if (index < kLfoRate || index >= kLfoRate + numLfos) return false;
  return values.byIndex[static_cast<std::size_t>(kLfoSync + index - kLfoRate)].value_or(0.0f) >
         0.5f;
}

/// An old gain of 0 has become an infinite attenuation, which is good silence.
bool isWithin(float value, double least, double most) {
  if (std::isinf(value) && value < 0.0f) return true;
  return value >= static_cast<float>(least) && value <= static_cast<float>(most);
}

std::string shortened(const std::string& key) { return "\"" + key.substr(0, 40) + "\""; }

void addValueProblems(const MigratedValues& values, const ParamBank& bank,
                      std::vector<PresetProblem>& problems) {
  for (int index = 0; index < kNumParams; ++index) {
    const auto& value = values.byIndex[static_cast<std::size_t>(index)];
    if (!value) continue;
    const IParam& param = *bank.getParam(index);
    const bool note = isNote(values, index);
    if (note ? isWithin(*value, 0.0, kLastNote) : isWithin(*value, param.min(), param.max())) {
      continue;
    }
    const std::string range = note ? std::string("0..7") : rangeText(param);
    problems.push_back({values.lineByIndex[static_cast<std::size_t>(index)],
                        std::string(param.name()) + " is out of range, expected " + range});
  }
}

void addKeyProblems(const PresetFile& preset, const MigratedValues& values, const ParamKeys& keys,
                    std::vector<PresetProblem>& problems) {
  const std::set<int> used(values.lineByIndex.begin(), values.lineByIndex.end());
  const std::set<std::string> known(keys.begin(), keys.end());
  for (const PresetValue& value : preset.values) {
    if (used.count(value.line) > 0) continue;
    const bool isKnown = known.count(value.key) > 0;
    problems.push_back({value.line, isKnown ? shortened(value.key) + " stands in the file before"
                                            : "no parameter is called " + shortened(value.key)});
  }
}

}  // namespace

std::vector<PresetProblem> presetProblems(const PresetReading& reading, const ParamBank& bank) {
  std::vector<PresetProblem> problems = reading.problems;
  const MigratedValues values = migrated(reading.preset, bank.keys());
  addKeyProblems(reading.preset, values, bank.keys(), problems);
  addValueProblems(values, bank, problems);
  std::ranges::stable_sort(problems, {}, &PresetProblem::line);
  return problems;
}

}  // namespace orvantesco
