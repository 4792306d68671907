// No effect allocates, frees or locks, whatever its knobs and modulators do.

#include <gtest/gtest.h>

#include "fx/EffectCatalogue.h"
#include "params/ParamIndex.h"
#include "realtime/RealTimeWork.h"
#include "support/ModulatorSettings.h"
#include "support/OrvantescoProbe.h"

namespace orvantesco {
namespace {

struct Place {
  EffectStage stage;
  int listIndex;
};

std::vector<Place> everyPlace() {
  std::vector<Place> places;
  for (const auto stage : {EffectStage::pre, EffectStage::feedback, EffectStage::post}) {
    const int count = static_cast<int>(effectTypeIds(stage).size());
    for (int i = 1; i < count; ++i) places.push_back({stage, i});
  }
  return places;
}

std::string placeName(const testing::TestParamInfo<Place>& info) {
  const char* const stages[] = {"Pre", "Feedback", "Post"};
  const Place& place = info.param;
  return stages[static_cast<int>(place.stage)] +
         std::to_string(effectTypeIdAt(place.stage, place.listIndex));
}

class EveryEffectRealTime : public testing::TestWithParam<Place> {
 protected:
  int position() const { return fxPosition(static_cast<int>(GetParam().stage), 0); }

  /// Slot 1 with the effect, each of its knobs modulated, and all modulators at work.
  void prepare(EngineRig& rig, int delayMode) const {
    switchOnModulators(rig);
    rig.set(kSlotOn, 1);
    rig.set(kDelayMode, delayMode);
    rig.set(kDelayTaps, 4);
    rig.set(kTapFxParam1, 1);  // POST effects then run for each tap
    {
      const auto loading = OrvantescoProbe{rig.effect}.loadingPreset();
      rig.set(fxTypeIndex(position()), GetParam().listIndex);
    }
    for (int k = 0; k < kFxParamCount; ++k) {
      rig.set(fxParamIndex(k, FxParamKind::modDepth, position()), 90.0);
      rig.set(fxParamIndex(k, FxParamKind::modSource, position()), 1 + k);
    }
    rig.set(fxOnIndex(position()), 1);
    rig.warmUp();
  }

  /// Each knob up and down, and the switch off and on, between short blocks.
  void play(EngineRig& rig, StereoBuffer& audio) const {
    constexpr int kBlock = 96;
    int step = 0;
    for (std::size_t at = 0; at + kBlock <= audio.size(); at += kBlock, ++step) {
      const double percent = step % 20 * 5.0;
      rig.set(fxParamIndex(step % kFxParamCount, FxParamKind::value, position()), percent);
      if (step % 40 == 0) rig.set(fxOnIndex(position()), step / 40 % 2 == 0 ? 1 : 0);
      rig.block(audio, at, kBlock);
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Places, EveryEffectRealTime, testing::ValuesIn(everyPlace()), placeName);

TEST_P(EveryEffectRealTime, AsksForNothingWhileKnobsAndModulatorsMove) {
  for (const int mode : {0, 3}) {
    EngineRig rig;
    prepare(rig, mode);
    StereoBuffer audio = noise(9600);
    expectRealTime(mode == 0 ? "forward" : "tapped", [&] { play(rig, audio); });
    const EffectPosition& place = OrvantescoProbe{rig.effect}.position(position());
    ASSERT_NE(place.running, nullptr);
    EXPECT_FALSE(place.running->list.empty()) << "there was nothing to run";
  }
}

}  // namespace
}  // namespace orvantesco
