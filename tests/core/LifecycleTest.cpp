// Construction, changes of rate, several instances in one process.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "fx/RateValues.h"
#include "params/ParamIndex.h"
#include "support/EngineRig.h"

namespace orvantesco {
namespace {

double peak(const std::vector<double>& samples) {
  double highest = 0.0;
  for (const double x : samples) highest = std::max(highest, std::abs(x));
  return highest;
}

TEST(Lifecycle, ClampsTheEnginesRateAndNotTheHosts) {
  struct Case {
    double hostRate, engineRate, ratio;
  };
  for (const Case& c : {Case{192000, 96000, 192000.0 / 44100}, Case{22050, 32000, 0.5},
                        Case{48000, 48000, 48000.0 / 44100}}) {
    EngineRig rig(c.hostRate);
    StereoBuffer audio(64);
    rig.render(audio);
    EXPECT_EQ(orvantesco::sampleRate, c.engineRate);
    EXPECT_DOUBLE_EQ(rateRatio, c.ratio);
    EXPECT_EQ(initialisedRate, c.hostRate);
  }
}

TEST(Lifecycle, AChangeOfRateEmptiesTheDelaysReportsTheLatencyAndFades) {
  EngineRig rig(44100.0);
  rig.set(kDelayTimeL, 300);
  rig.set(kDelayTimeR, 300);
  rig.set(kTimebase, 0);
  rig.set(kFeedback, 100);
  rig.warmUp();
  StereoBuffer loud = noise(44100);
  rig.render(loud);
  EXPECT_EQ(rig.host.latencySamples(), 76);

  rig.host.setSampleRate(48000.0);
  StereoBuffer audio(48000);
  rig.render(audio);
  EXPECT_EQ(rig.host.latencySamples(), 80);
  EXPECT_LT(peak(audio.left), 1e-13) << "what stood in the delay lines is gone";

  rig.host.setSampleRate(44100.0);
  StereoBuffer ones(44100);
  ones.left.assign(44100, 0.5);
  rig.set(kDryLevel, 100);
  rig.set(kWetLevel, 0);
  rig.render(ones);
  EXPECT_LT(ones.left[76 + 441], 0.03) << "the fade is square: 10 ms after its start at 1 %";
  EXPECT_NEAR(ones.left[76 + 5000], 0.5, 1e-12);
}

TEST(Lifecycle, TheSameRateAgainChangesNothing) {
  EngineRig rig;
  rig.warmUp();
  StereoBuffer first = noise(4800);
  rig.render(first);
  rig.effect.InitForSampleRate(false);
  EngineRig reference;
  reference.warmUp();
  StereoBuffer same = noise(4800);
  reference.render(same);
  StereoBuffer a(9600), b(9600);
  rig.render(a);
  reference.render(b);
  EXPECT_EQ(a.left, b.left);
  EXPECT_GT(peak(a.left), 0.001);
}

TEST(Lifecycle, ASecondInstanceIsNotNoticedByTheFirst) {
  const auto rendered = [](bool withOthers) {
    EngineRig rig;
    rig.set(kFeedback, 90);
    rig.warmUp();
    std::unique_ptr<EngineRig> other;
    StereoBuffer audio = noise(96000);
    for (std::size_t done = 0; done < audio.size(); done += 480) {
      if (withOthers && done % 9600 == 4800) other = std::make_unique<EngineRig>(48000.0);
      if (withOthers && done % 9600 == 9120) other.reset();
      rig.block(audio, done, 480);
      if (other == nullptr) continue;
      StereoBuffer theirs = noise(480);
      other->render(theirs);
    }
    return audio.left;
  };
  EXPECT_EQ(rendered(false), rendered(true));
}

TEST(Lifecycle, ALaterInstanceIsReadyAtTheRateInForce) {
  EngineRig first;
  StereoBuffer audio(480);
  first.render(audio);
  EngineRig second;
  EXPECT_EQ(orvantesco::sampleRate, 48000.0);
  second.render(audio);
  EXPECT_EQ(second.host.latencySamples(), 80);
}

TEST(Lifecycle, InstancesAtTwoRatesDoNotInitialiseEachOtherInTurn) {
  EngineRig slow(44100.0), fast(96000.0);
  StereoBuffer audio = noise(9600);
  slow.render(audio);
  fast.render(audio);
  EXPECT_EQ(orvantesco::sampleRate, 96000.0) << "the last initialisation wins";
  slow.render(audio);
  fast.render(audio);
  EXPECT_EQ(initialisedRate, 96000.0) << "and nobody takes it back";
}

TEST(Lifecycle, ComingBackToPlayTakesTheRateFromAnInstanceThatHasGone) {
  EngineRig rig(48000.0);
  rig.effect.prepareToPlay();
  {
    EngineRig passing(96000.0);
    passing.effect.prepareToPlay();
    ASSERT_EQ(orvantesco::sampleRate, 96000.0);
  }
  rig.effect.prepareToPlay();
  EXPECT_EQ(orvantesco::sampleRate, 48000.0);
  EXPECT_EQ(initialisedRate, 48000.0);
  EXPECT_EQ(rig.host.latencySamples(), 80);
}

TEST(Lifecycle, ClearingDropsAllSound) {
  EngineRig rig;
  rig.set(kFeedback, 100);
  rig.warmUp();
  StereoBuffer loud = noise(48000);
  rig.render(loud);
  rig.effect.ResetDSP();
  StereoBuffer audio(96000);
  rig.render(audio);
  EXPECT_LT(peak(audio.left), 1e-13) << "all but the grain that keeps denormals away";
}

TEST(Lifecycle, AfterConstructionTheFrameworksRateStandsAtMinusOne) {
  EngineRig rig;
  EXPECT_EQ(static_cast<const IPlugBase&>(rig.effect).sampleRate, -1.0);
}

TEST(Lifecycle, OneSlotIsOnInAFreshInstance) {
  EngineRig rig;
  EXPECT_GT(rig.effect.longestDelayInUse(), 0.4);
  rig.set(kSlotOn, 0);
  EXPECT_EQ(rig.effect.longestDelayInUse(), 0.0);
}

}  // namespace
}  // namespace orvantesco
