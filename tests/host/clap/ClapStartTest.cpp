// Where an effect begins: what activations and resets leave of what was played before.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "host/clap/ClapInstance.h"
#include "host/clap/ClapParameters.h"
#include "host/clap/ClapRender.h"

namespace orvantesco {
namespace {

/// The loudest frame of both channels from one on.
double peakFrom(const StereoBuffer& sound, std::size_t first) {
  double peak = 0.0;
  for (std::size_t i = first; i < sound.size(); ++i) {
    peak = std::max({peak, std::abs(sound.left[i]), std::abs(sound.right[i])});
  }
  return peak;
}

constexpr double kSampleAndHold = 26;

/// Settings of which all that moves by itself is heard: a gate in tempo, a sample and hold, the
/// main modulator and noise.
void setAllMoving(ClapInstance& instance) {
  instance.in.value(0, kDryLevel, 0.0);
  instance.in.value(0, kDelayTimeL, 0.05);
  instance.in.value(0, kDelayTimeR, 0.06);
  instance.in.value(0, kGateOn, 1);
  for (clap_id step = 0; step < 64; step += 3) instance.in.value(0, kGateStep + step, 1.0);
  instance.in.value(0, kGateSync, 1);
  instance.in.value(0, kGateDirection, 3);
  instance.in.value(0, kPanningModSource, 5);
  instance.in.value(0, kPanningModDepth, 0.9);
  instance.in.value(0, kLfoOn, 1);
  instance.in.value(0, kLfoWave, kSampleAndHold);
  instance.in.value(0, kDelayTimeLModSource, 1);
  instance.in.value(0, kDelayTimeLModDepth, 0.7);
  instance.in.value(0, kMainModDepth, 0.5);
  instance.flush();
}

/// What a host hears that plays a second from beat 3 at 137 beats per minute.
StereoBuffer bounce(ClapInstance& instance) {
  ClapPlan plan;
  plan.tempo = 137.0;
  plan.startBeats = 3.0;
  plan.blocks = {300};
  return throughClap(instance, noise(48000), plan);
}

bool areSame(const StereoBuffer& a, const StereoBuffer& b) {
  return a.left == b.left && a.right == b.right;
}

TEST(ClapStart, ManyActivationsLeaveItAsGoodAsNew) {
  ClapInstance instance;
  setAllMoving(instance);
  instance.start();
  const StereoBuffer first = bounce(instance);
  EXPECT_GT(peakFrom(first, 40000), 0.1);
  for (const double rate : {44100.0, 96000.0, 8000.0, 48000.0}) {
    instance.stopProcessing();
    instance.deactivate();
    instance.start(rate, 64);
    throughClap(instance, noise(517), {});
  }
  for (const int longest : {64, 512}) {
    instance.stopProcessing();
    instance.deactivate();
    instance.start(48000.0, longest);
    EXPECT_TRUE(areSame(bounce(instance), first)) << longest;
  }
}

TEST(ClapStart, ActivatingBringsNoEchoFromBefore) {
  ClapInstance instance;
  instance.start();
  throughClap(instance, noise(20000), {});
  instance.stopProcessing();
  instance.deactivate();
  instance.start();
  EXPECT_LT(peakFrom(throughClap(instance, StereoBuffer(24000), {}), 0), 1e-9);
}

TEST(ClapStart, TheFirstFrameIsHeardInFull) {
  ClapInstance instance;
  instance.in.value(0, kWetLevel, 0.0);
  instance.start();
  StereoBuffer impulse(256);
  impulse.left[0] = impulse.right[0] = 0.5;
  const StereoBuffer heard = throughClap(instance, impulse, {});
  EXPECT_NEAR(heard.left[80], 0.5 * instance.value(kDryLevel), 0.01);
}

TEST(ClapStart, AResetSilencesTheEchoes) {
  ClapInstance instance;
  instance.start();
  throughClap(instance, noise(48000), {});
  instance.reset();
  EXPECT_LT(peakFrom(throughClap(instance, StereoBuffer(48000), {}), 0), 1e-9);
}

TEST(ClapStart, AResetKeepsNothingFromBeforeAndLosesNothingFromBehind) {
  ClapInstance instance;
  instance.start();
  instance.in.value(0, kWetLevel, 0.0);
  const int latency = 80;
  for (const std::size_t before : {48000u, 1013u, 31u, 32u, 1u}) {
    throughClap(instance, noise(before), {});
    instance.reset();
    StereoBuffer impulse(1024);
    impulse.left[0] = impulse.right[0] = 0.5;
    const StereoBuffer after = throughClap(instance, impulse, {});
    for (std::size_t i = 0; i < after.size(); ++i) {
      const bool isImpulse = i == latency;
      ASSERT_EQ(std::abs(after.left[i]) > 0.1, isImpulse) << before << " " << i;
      ASSERT_EQ(std::abs(after.right[i]) > 1e-9, isImpulse) << before << " " << i;
    }
  }
}

/// Where nothing glides a reset is as good as an activation: what moves by itself begins anew.
TEST(ClapStart, AResetPutsWhatMovesByItselfAtItsBeginning) {
  ClapInstance instance;
  setAllMoving(instance);
  instance.in.value(0, kDelayTimeLModDepth, 0.5);
  instance.flush();
  instance.start();
  const auto twoSeconds = [&instance] {
    instance.reset();
    return throughClap(instance, noise(96000), {});
  };
  twoSeconds();
  const StereoBuffer first = twoSeconds();
  throughClap(instance, noise(1013), {});
  EXPECT_TRUE(areSame(twoSeconds(), first));
}

TEST(ClapStart, AResetTakesABlockNoMatterWhereTheLastOneEnded) {
  ClapInstance instance;
  instance.start();
  const StereoBuffer sound = noise(9600);
  throughClap(instance, noise(48000), {});
  instance.reset();
  const StereoBuffer once = throughClap(instance, sound, {});
  throughClap(instance, noise(48017), {});
  instance.reset();
  EXPECT_TRUE(throughClap(instance, sound, {}).left == once.left);
}

TEST(ClapStart, ASessionSavedBypassedBeginsDry) {
  ClapInstance instance;
  instance.in.value(0, ClapParameters::bypassId, 1.0);
  instance.flush();
  instance.start();
  const StereoBuffer sound = noise(4800);
  const StereoBuffer heard = throughClap(instance, sound, {});
  for (std::size_t i = 0; i < heard.size(); ++i) {
    ASSERT_EQ(heard.left[i], i < 80 ? 0.0 : sound.left[i - 80]) << i;
  }
}

}  // namespace
}  // namespace orvantesco
