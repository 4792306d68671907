// The tap masks: what sounds, where the POST effect runs, where it may be modulated.

#include <gtest/gtest.h>

#include <cmath>

#include "params/ParamIndex.h"
#include "support/EngineRig.h"
#include "support/OrvantescoProbe.h"

namespace orvantesco {
namespace {

/// Taps of 10 ms without feedback, wet alone.
struct TapRig : EngineRig {
  TapRig() {
    set(kDryLevel, 0);
    set(kInput, 3);
    set(kDelayMode, 3);
    set(kDelayTapsTime, 10);
    set(kFeedback, 0);
    set(kMainModDepth, 0);
    warmUp();
  }

  /// Largest sample around tap t after an impulse on both sides.
  StereoBuffer impulse() {
    StereoBuffer audio(12000);
    audio.left[0] = audio.right[0] = 1.0;
    render(audio);
    return audio;
  }
};

double around(const std::vector<double>& samples, int tap) {
  const auto centre = static_cast<std::size_t>(80 + 480 * (tap + 1));
  double highest = 0.0;
  for (std::size_t i = centre - 5; i < centre + 40; ++i) {
    highest = std::max(highest, std::abs(samples[i]));
  }
  return highest;
}

TEST(TapMasks, SoundExactlyTheTapsOfEachSide) {
  TapRig rig;
  rig.effect.setTapMasks(0, {0x05, 0x0A});
  const StereoBuffer audio = rig.impulse();
  for (int tap = 0; tap < 8; ++tap) {
    EXPECT_EQ(around(audio.left, tap) > 0.05, tap == 0 || tap == 2) << tap;
    EXPECT_EQ(around(audio.right, tap) > 0.05, tap == 1 || tap == 3) << tap;
  }
  EXPECT_EQ(rig.effect.tapMasks(0).left, 0x05);
  EXPECT_EQ(rig.effect.tapMasks(0).right, 0x0A);
}

TEST(TapMasks, StepModBitsAskForTheSourcesOfThePostEffectAnew) {
  EngineRig rig;
  const OrvantescoProbe probe{rig.effect};
  probe.settle();
  rig.effect.setStepModMask(1, 2, 0x00F0);
  EXPECT_EQ(probe.taps(2).stepModMask[1], 0x00F0);
  EXPECT_EQ(probe.effectRequests(effectPositionIndex(2, kStagePO)), kTakeAllEffectSources);
  rig.effect.setStepFxMask(3, 0x8001);
  EXPECT_EQ(probe.taps(3).stepFxMask, 0x8001);
}

}  // namespace
}  // namespace orvantesco
