// A slot whose delay is off passes what stands before the delay, so each effect can be heard alone:
// it sounds in the engine as the class sounds by itself.

#include <gtest/gtest.h>

#include "fx/EffectCatalogue.h"
#include "fx/EffectFactory.h"
#include "fx/RateValues.h"
#include "params/ParamIndex.h"
#include "support/EngineRig.h"
#include "support/OrvantescoProbe.h"

namespace orvantesco {
namespace {

constexpr double kRate = 48000.0;
constexpr int kPosition = fxPosition(static_cast<int>(EffectStage::pre), 0);
/// Quiet at first, until the fade of the start is over.
constexpr std::size_t kQuiet = 16000;
constexpr std::size_t kFrames = 32000;

/// Knobs of a telling setting, all wet.
double knobOf(int typeId, int k) {
  if (k == 4 && fifthParamIsMix(typeId)) return 1.0;
  return 0.3 + 0.1 * k;
}

std::vector<int> everyOuterId() {
  std::vector<int> ids;
  for (const int id : effectTypeIds(EffectStage::pre)) {
    if (id != kNoEffect) ids.push_back(id);
  }
  return ids;
}

StereoBuffer rendered(int typeId) {
  EngineRig rig(kRate);
  rig.set(kDelayOn, 0);
  rig.set(kInput, 3);
  rig.set(kInputGain, 0);
  rig.set(kLevel, 0);
  rig.set(kDryLevel, 0);
  rig.set(kWetLevel, 100);
  {
    const auto loading = OrvantescoProbe{rig.effect}.loadingPreset();
    rig.set(fxTypeIndex(kPosition), effectListIndex(EffectStage::pre, typeId));
  }
  for (int k = 0; k < kFxParamCount; ++k) {
    rig.set(fxParamIndex(k, FxParamKind::value, kPosition), 100.0 * knobOf(typeId, k));
  }
  rig.set(fxOnIndex(kPosition), 1);
  StereoBuffer audio = noise(kFrames, 0.4, 3);
  std::fill_n(audio.left.begin(), kQuiet, 0.0);
  std::fill_n(audio.right.begin(), kQuiet, 0.0);
  rig.render(audio, 480);
  return audio;
}

std::shared_ptr<DSPShell> build(int typeId, bool isRight, DSPShell* partner) {
  auto effect = createEffect(typeId, isRight, partner);
  for (int k = 0; k < kFxParamCount; ++k) {
    double position = knobOf(typeId, k), control = 0.0;
    fxParamScale(typeId, k, &position, &control);
    effect->setParam(k, control);
  }
  effect->setBypass(false);
  return effect;
}

/// What the effect makes of what the slot gives it, in the slot's own vectors.
StereoBuffer played(int typeId, const StereoBuffer& input, std::size_t firstVector) {
  const auto left = build(typeId, false, nullptr);
  const auto right = build(typeId, true, left.get());
  StereoBuffer in = input, out(input.size());
  for (std::size_t at = firstVector; at + kVectorLength <= in.size(); at += kVectorLength) {
    left->process(&in.left[at], &out.left[at]);
    right->process(&in.right[at], &out.right[at]);
  }
  return out;
}

class EffectAlone : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Types, EffectAlone, testing::ValuesIn(everyOuterId()));

TEST_P(EffectAlone, SoundsInASlotAsItSoundsByItself) {
  setRateValues(kRate);
  // The slot's first vector is heard after the latency: a vector and the limiter's look-ahead.
  const auto firstVector = static_cast<std::size_t>(kVectorLength + limiterLookahead);
  const StereoBuffer input = rendered(kNoEffect);
  const StereoBuffer expected = played(GetParam(), input, firstVector);
  const StereoBuffer heard = rendered(GetParam());
  double largest = 0.0, loudest = 0.0;
  for (std::size_t i = kQuiet; i + kVectorLength < heard.size(); ++i) {
    largest = std::max({largest, std::fabs(heard.left[i] - expected.left[i]),
                        std::fabs(heard.right[i] - expected.right[i])});
    loudest = std::max({loudest, std::fabs(heard.left[i]), std::fabs(heard.right[i])});
  }
  EXPECT_GT(loudest, 1e-3);
  EXPECT_LT(largest, 1e-9 * std::max(1.0, loudest));
}

}  // namespace
}  // namespace orvantesco
