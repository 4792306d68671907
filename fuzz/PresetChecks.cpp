#include "fuzz/PresetChecks.h"

#include <cmath>

#include "fuzz/Require.h"
#include "presets/PresetCheck.h"
#include "presets/PresetMigration.h"
#include "presets/PresetReader.h"
#include "presets/PresetWriter.h"

namespace orvantesco {
namespace {

const ParamBank& bank() {
  static ParamBank built;
  [[maybe_unused]] static const bool once = (built.buildParameterBank(), true);
  return built;
}

PresetReading readAgain(const std::string& text) {
  const PresetResult result = parsePreset(text);
  const auto* reading = std::get_if<PresetReading>(&result);
  require(reading != nullptr, "what was written is a preset");
  return *reading;
}

}  // namespace

void checkPresetBytes(std::string_view bytes) {
  const PresetResult result = parsePreset(bytes);
  const auto* reading = std::get_if<PresetReading>(&result);
  if (reading == nullptr) return;
  for (const PresetValue& value : reading->preset.values) {
    require(std::isfinite(value.value), "every value that is read is finite");
    require(!value.key.empty() && value.line > 0, "every value has a key and a line");
  }
  const MigratedValues values = migrated(reading->preset, bank().keys());
  require(values.byIndex.size() == kNumParams, "every parameter has its place");
  for (const PresetProblem& problem : presetProblems(*reading, bank())) {
    require(!problem.message.empty(), "every problem has a message");
  }
  const std::string text = presetText(reading->preset);
  const PresetReading again = readAgain(text);
  require(again.problems.empty(), "what was written reads without a problem");
  require(presetText(again.preset) == text, "what was written reads back");
}

}  // namespace orvantesco
