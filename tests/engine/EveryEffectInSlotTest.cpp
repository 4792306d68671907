// Every effect at every position of a slot: heard when it is on, as if it were not there when it is
// off, and bounded in a loop that feeds back more than it takes.

#include <gtest/gtest.h>

#include "fx/EffectCatalogue.h"
#include "params/ParamIndex.h"
#include "support/EngineRig.h"
#include "support/OrvantescoProbe.h"

namespace orvantesco {
namespace {

struct Place {
  EffectStage stage;
  int typeId;
};

enum Mode { kForwardMode = 0, kTappedMode = 3 };

std::vector<Place> everyPlace() {
  std::vector<Place> places;
  for (const auto stage : {EffectStage::pre, EffectStage::feedback, EffectStage::post}) {
    for (const int id : effectTypeIds(stage)) {
      if (id != kNoEffect) places.push_back({stage, id});
    }
  }
  return places;
}

std::string placeName(const testing::TestParamInfo<Place>& info) {
  const Place& place = info.param;
  const char* const stages[] = {"Pre", "Feedback", "Post"};
  std::string name = stages[static_cast<int>(place.stage)];
  name += "_" + std::to_string(place.typeId) + "_";
  for (const char* c = effectRecord(place.typeId).menuName; *c != '\0'; ++c) {
    if (std::isalnum(static_cast<unsigned char>(*c)) != 0) name += *c;
  }
  return name;
}

int positionOf(const Place& place) { return fxPosition(static_cast<int>(place.stage), 0); }

/// As a preset chooses it: automation may not change the type.
void chooseEffect(EngineRig& rig, const Place& place) {
  const int position = positionOf(place);
  {
    const auto loading = OrvantescoProbe{rig.effect}.loadingPreset();
    rig.set(fxTypeIndex(position), effectListIndex(place.stage, place.typeId));
  }
  for (int k = 0; k < kFxParamCount; ++k) {
    rig.set(fxParamIndex(k, FxParamKind::value, position),
            100.0 * fxParameter(place.typeId, k).initial);
  }
}

/// Slot 1 with short echoes that go round, its effect chosen but not yet on.
void prepare(EngineRig& rig, const Place& place, int mode) {
  rig.set(kDelayMode, mode);
  rig.set(kTimebase, 0);
  rig.set(kDelayTimeL, 31.0);
  rig.set(kDelayTimeR, 23.0);
  rig.set(kDelayTaps, 3);
  rig.set(kDelayTapsTime, 17.0);
  rig.set(kFeedback, 60.0);
  chooseEffect(rig, place);
}

StereoBuffer renderNoise(EngineRig& rig, std::size_t frames = 24000) {
  rig.warmUp();
  StereoBuffer audio = noise(frames, 0.3, 7);
  rig.render(audio, 333);
  return audio;
}

double peakFrom(const StereoBuffer& audio, std::size_t first) {
  double peak = 0.0;
  for (std::size_t i = first; i < audio.size(); ++i) {
    peak = std::max({peak, std::fabs(audio.left[i]), std::fabs(audio.right[i])});
    if (!std::isfinite(audio.left[i]) || !std::isfinite(audio.right[i])) return INFINITY;
  }
  return peak;
}

class EveryEffectInSlot : public testing::TestWithParam<Place> {};

INSTANTIATE_TEST_SUITE_P(Places, EveryEffectInSlot, testing::ValuesIn(everyPlace()), placeName);

TEST_P(EveryEffectInSlot, IsHeardWhenOnAndNotThereWhenOff) {
  for (const int mode : {kForwardMode, kTappedMode}) {
    EngineRig without, off, on;
    prepare(without, {GetParam().stage, kNoEffect}, mode);
    prepare(off, GetParam(), mode);
    prepare(on, GetParam(), mode);
    on.set(fxOnIndex(positionOf(GetParam())), 1);
    // A knob away from its default, where some types do nothing to the sound.
    on.set(fxParamIndex(0, FxParamKind::value, positionOf(GetParam())), 70.0);
    const StereoBuffer plain = renderNoise(without), silent = renderNoise(off);
    EXPECT_TRUE(plain.left == silent.left) << "mode " << mode;
    EXPECT_TRUE(plain.right == silent.right) << "mode " << mode;
    const StereoBuffer heard = renderNoise(on);
    EXPECT_TRUE(plain.left != heard.left) << "mode " << mode;
    EXPECT_TRUE(plain.right != heard.right) << "mode " << mode;
    EXPECT_LT(peakFrom(heard, 0), 100.0) << "mode " << mode;
  }
}

TEST_P(EveryEffectInSlot, GivesTheSameBitsHoweverTheHostCutsItsBlocks) {
  EngineRig whole, cut;
  for (EngineRig* rig : {&whole, &cut}) {
    prepare(*rig, GetParam(), kForwardMode);
    rig->set(fxOnIndex(positionOf(GetParam())), 1);
    rig->warmUp();
  }
  StereoBuffer a = noise(6000), b = noise(6000);
  whole.render(a, 4096);
  cut.render(b, 7);
  EXPECT_TRUE(a.left == b.left);
  EXPECT_TRUE(a.right == b.right);
}

TEST_P(EveryEffectInSlot, GoesOnAtAnotherRate) {
  EngineRig rig;
  prepare(rig, GetParam(), kForwardMode);
  rig.set(fxOnIndex(positionOf(GetParam())), 1);
  for (const double rate : {48000.0, 96000.0, 22050.0}) {
    rig.host.setSampleRate(rate);
    const StereoBuffer audio = renderNoise(rig, 12000);
    EXPECT_GT(peakFrom(audio, 6000), 1e-3) << rate;
    EXPECT_LT(peakFrom(audio, 0), 100.0) << rate;
  }
}

std::vector<Place> everyFeedbackPlace() {
  std::vector<Place> places;
  for (const Place& place : everyPlace()) {
    if (place.stage == EffectStage::feedback) places.push_back(place);
  }
  return places;
}

class EveryEffectInTheLoop : public testing::TestWithParam<Place> {};

INSTANTIATE_TEST_SUITE_P(Types, EveryEffectInTheLoop, testing::ValuesIn(everyFeedbackPlace()),
                         placeName);

/// The soft clip keeps what goes round below 1.5, so what is heard is at most that times the
/// feedback of 1.6 and the gain of the effect, which stands behind the delay.
TEST_P(EveryEffectInTheLoop, SettlesAtAFeedbackOf160Percent) {
  for (const double knob : {-1.0, 0.0, 1.0}) {
    EngineRig rig;
    prepare(rig, GetParam(), kForwardMode);
    rig.set(kFeedback, 160.0);
    rig.set(fxOnIndex(positionOf(GetParam())), 1);
    if (knob >= 0.0)
      rig.set(fxParamIndex(0, FxParamKind::value, positionOf(GetParam())), 100 * knob);
    renderNoise(rig, 48000);
    StereoBuffer silence(6 * 48000);
    rig.render(silence);
    EXPECT_LT(peakFrom(silence, 0), 8.0) << "knob at " << knob;
  }
}

}  // namespace
}  // namespace orvantesco
