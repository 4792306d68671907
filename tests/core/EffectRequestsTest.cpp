// What reaches the instances of an effect, and in which order.

#include <gtest/gtest.h>

#include "fx/EffectCatalogue.h"
#include "params/ParamIndex.h"
#include "support/EngineRig.h"
#include "support/OrvantescoProbe.h"

namespace orvantesco {
namespace {

constexpr int kWaveShapeId = 6;
constexpr int kPosition = fxPosition(kStagePR, 0);

/// "WAVE SHAPE" at 20 % of its gain with a sharp peak, in front of the delay of slot 1.
void loadWaveShape(EngineRig& rig) {
  const double knobs[] = {0.0, 20.0, 50.0, 100.0, 50.0};
  const auto loading = OrvantescoProbe{rig.effect}.loadingPreset();
  rig.set(fxTypeIndex(kPosition), effectListIndex(EffectStage::pre, kWaveShapeId));
  for (int k = 0; k < kFxParamCount; ++k) {
    rig.set(fxParamIndex(k, FxParamKind::value, kPosition), knobs[k]);
  }
  rig.set(fxOnIndex(kPosition), 1);
}

/// What slot 1 hears behind its PRE effect, once all knobs have arrived.
StereoBuffer heard(EngineRig& rig) {
  rig.warmUp(3.0);
  StereoBuffer audio = noise(4096, 0.3, 7), out;
  for (std::size_t at = 0; at < audio.size(); at += kVectorLength) {
    rig.block(audio, at, kVectorLength);
    const StereoVector& pre = OrvantescoProbe{rig.effect}.engineSlot(0).stage[kStagePre];
    out.left.insert(out.left.end(), pre.left.begin(), pre.left.end());
    out.right.insert(out.right.end(), pre.right.begin(), pre.right.end());
  }
  return out;
}

double largestDifference(const std::vector<double>& a, const std::vector<double>& b) {
  double largest = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) largest = std::max(largest, std::fabs(a[i] - b[i]));
  return largest;
}

/// Switching on brings the whole filter of "WAVE SHAPE" back, whatever its gain knob says.
TEST(EffectRequests, APresetSoundsAsItDoesAfterItsEffectWasSwitchedOffAndOn) {
  EngineRig loaded, switched;
  loadWaveShape(loaded);
  loadWaveShape(switched);
  switched.warmUp(0.1);
  for (const int on : {0, 1}) {
    switched.set(fxOnIndex(kPosition), on);
    switched.warmUp(0.1);
  }
  const StereoBuffer a = heard(loaded), b = heard(switched);
  EXPECT_LT(largestDifference(a.left, b.left), 1e-9);
  EXPECT_LT(largestDifference(a.right, b.right), 1e-9);
}

TEST(EffectRequests, AKnobThatMovesLaterIsHeardBesideTheSwitch) {
  EngineRig loaded, turned;
  loadWaveShape(loaded);
  loadWaveShape(turned);
  turned.warmUp(0.1);
  turned.set(fxParamIndex(1, FxParamKind::value, kPosition), 20.0);
  EXPECT_GT(largestDifference(heard(loaded).left, heard(turned).left), 1e-3);
}

}  // namespace
}  // namespace orvantesco
