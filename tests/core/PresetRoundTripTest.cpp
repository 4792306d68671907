// What is saved as a preset comes back as it was.

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "core/PresetLoadRig.h"
#include "presets/PresetReader.h"
#include "support/LongTests.h"
#include "support/StateBytes.h"

namespace orvantesco {
namespace {

using PresetRoundTrip = PresetLoadRig;

/// Values that an effect did not take over from another one, as the loads of `index` tell them.
std::string differences(EngineRig& from, EngineRig& to, int index) {
  std::string text;
  for (int other = 0; other < kNumParams; ++other) {
    const double was = from.effect.GetParam(other)->value();
    const double is = to.effect.GetParam(other)->value();
    if (static_cast<float>(was) != static_cast<float>(is)) {
      text += std::to_string(index) + " moves " + std::to_string(other) + "\n";
    }
  }
  return text;
}

TEST_F(PresetRoundTrip, EveryParameterComesBackToItsOwnPlace) {
  EngineRig source;
  std::string wrong;
  for (int index = 0; index < kNumParams; ++index) {
    IParam& param = *source.effect.GetParam(index);
    const double end = param.value() == param.max() ? param.min() : param.max();
    param.setValue(isFxType(index) ? 5.0 : end);
    // What a rate means depends on this one: the engine gives the rate its other form.
    const bool isSync = index >= kLfoSync && index < kLfoSync + numLfos;
    if (isSync) source.effect.OnParamChange(index);
    rig.effect.settings().applyPreset(source.effect.settings().currentPreset());
    wrong += differences(source, rig, index);
    param.setValue(param.defaultValue());
    if (isSync) source.effect.settings().applyPreset(Preset{});
  }
  EXPECT_EQ(wrong, "");
}

TEST_F(PresetRoundTrip, TheSecondOfTwoParametersOfOneNameComesBackToItsOwnPlace) {
  rig.effect.GetParam(kLogicSmooth + 2)->setValue(20.0);
  const Preset preset = rig.effect.settings().currentPreset();
  EXPECT_EQ(preset.values.size(), 2u) << "the first is listed so that the second is the second";
  rig.effect.settings().applyPreset(Preset{});
  rig.effect.settings().applyPreset(preset);
  EXPECT_EQ(value(kLogicSmooth + 1), 0.0);
  EXPECT_EQ(value(kLogicSmooth + 2), 20.0);
}

/// Parameters that a file gives back other than to six digits.
int strayed(EngineRig& from, EngineRig& to) {
  int count = 0;
  for (int index = 0; index < kNumParams; ++index) {
    const double was = from.effect.GetParam(index)->value();
    const double is = to.effect.GetParam(index)->value();
    if (std::abs(was - is) > 5.1e-6 * std::abs(was)) ++count;
  }
  return count;
}

TEST_F(PresetRoundTrip, RandomPresetsComeBackInAnEffectThatWasAnywhere) {
  std::mt19937 draw(21);
  EngineRig other;
  const int presets = timesOrLong(250, 10000);
  for (int i = 0; i < presets; ++i) {
    rig.effect.UnserializeState(randomState(draw).chunk(), 0);
    const auto result = parsePreset(savedText());
    const auto& reading = std::get<PresetReading>(result);
    ASSERT_TRUE(reading.problems.empty());
    other.effect.settings().applyPreset(reading.preset);
    ASSERT_EQ(strayed(rig, other), 0) << "preset " << i;
    // What six digits can say comes back as it is.
    const std::string text = presetText(other.effect.settings().currentPreset());
    const auto again = parsePreset(text);
    rig.effect.settings().applyPreset(std::get<PresetReading>(again).preset);
    ASSERT_EQ(savedText(), text) << "preset " << i;
  }
}

}  // namespace
}  // namespace orvantesco
