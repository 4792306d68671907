#include "presets/PresetCheck.h"

#include <algorithm>
#include <cmath>
#include <map>

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

/// Each parameter takes one line of its key, so a key that two share may come twice.
void addKeyProblems(const Preset& preset, const ParamKeys& keys,
                    std::vector<PresetProblem>& problems) {
  struct Use {
    int parameters = 0;
    int lines = 0;
  };
  std::map<std::string_view, Use> uses;
  for (const PresetValue& value : preset.values) uses.try_emplace(value.key);
  for (const std::string& key : keys) {
    if (const auto found = uses.find(key); found != uses.end()) ++found->second.parameters;
  }
  for (const PresetValue& value : preset.values) {
    Use& use = uses.at(value.key);
    if (use.parameters == 0) {
      problems.push_back({value.line, "no parameter is called " + shortened(value.key)});
    } else if (++use.lines > use.parameters) {
      problems.push_back({value.line, shortened(value.key) + " stands in the file before"});
    }
  }
}

}  // namespace

std::vector<PresetProblem> presetProblems(const PresetReading& reading, const ParamBank& bank) {
  std::vector<PresetProblem> problems = reading.problems;
  const MigratedValues values = migrated(reading.preset, bank.keys());
  addKeyProblems(reading.preset, bank.keys(), problems);
  addValueProblems(values, bank, problems);
  std::ranges::stable_sort(problems, {}, &PresetProblem::line);
  return problems;
}

}  // namespace orvantesco
