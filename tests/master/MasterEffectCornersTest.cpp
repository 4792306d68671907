// Ten seconds at every corner of the knobs of every master effect, and of the limiter.
#include <gtest/gtest.h>

#include <tuple>

#include "core/MasterEffectScale.h"
#include "master/MasterEffectFactory.h"
#include "master/MasterLimiter.h"
#include "master/ReverbTestSupport.h"

namespace orvantesco {
namespace {

using namespace testing_support;

struct Course {
  double highest = 0.0;  ///< infinite where a sample was no number
  double earlyDb = 0.0;  ///< the second second of the silence
  double lateDb = 0.0;   ///< its last second
};

/// Two seconds of full-scale noise, and eight in which the block is left alone.
Course courseOf(DSPShell& block) {
  const auto second = static_cast<int>(sampleRate / kVectorLength);
  const Stereo sounding = runStereo(block, stereoNoise(2 * second, 1.0));
  const Stereo tail = runStereo(block, stereoSilence(8 * second));
  const auto length = static_cast<size_t>(second) * kVectorLength;
  Course course;
  course.highest = std::max(largestMagnitude(sounding), largestMagnitude(tail));
  // Short decays have arrived at what keeps them out of the denormal range by then.
  course.earlyDb = std::max(levelDb(tail, length, 2 * length), -300.0);
  course.lateDb = levelDb(tail, 7 * length, 8 * length);
  return course;
}

void expectStable(int menuPosition, int corner) {
  const std::unique_ptr<DSPShell> block = createMasterEffect(menuPosition - 1);
  for (int knob = 0; knob < kMasterFxKnobs; ++knob) {
    const double x = ((corner >> knob) & 1) != 0 ? 1.0 : 0.0;
    block->setParam(knob, masterFxScale(menuPosition, knob, x).native);
  }
  const Course course = courseOf(*block);
  // Two bands of 18 dB on one place give 63 for a sine.
  EXPECT_LT(course.highest, 70.0) << corner;
  EXPECT_GT(course.highest, 0.0) << corner;
  EXPECT_LT(course.lateDb, course.earlyDb) << corner;
}

/// An entry of the "MasterFX" menu.
class MasterEffectCorners : public testing::TestWithParam<int> {};

TEST_P(MasterEffectCorners, AreAllStableAndDecay) {
  for (const double rate : {32000.0, 44100.0}) {
    const ScopedRate scope(rate);
    for (int corner = 0; corner < 16; ++corner) expectStable(GetParam(), corner);
  }
}

TEST_P(MasterEffectCorners, TheLongestDecaysAreStableAt96000Hz) {
  const ScopedRate scope(96000.0);
  for (const int corner : {1, 2, 3, 15}) expectStable(GetParam(), corner);
}

INSTANTIATE_TEST_SUITE_P(EveryMasterEffect, MasterEffectCorners,
                         testing::Range(1, static_cast<int>(kMasterFxMenuEntries)));

class LimiterCorners : public testing::TestWithParam<std::tuple<int, double>> {};

TEST_P(LimiterCorners, AreStableAndEndInSilence) {
  const auto [mode, boostDb] = GetParam();
  for (const double rate : {32000.0, 44100.0}) {
    const ScopedRate scope(rate);
    MasterLimiter limiter;
    limiter.setMode(mode, false);
    limiter.setBoostDb(boostDb);
    const Course course = courseOf(limiter);
    // 6 dB for what the mode does not hear of a channel, 3.1 for the soft limit.
    EXPECT_LT(course.highest, 2.9) << rate;
    EXPECT_GT(course.highest, 0.1) << rate;
    EXPECT_LT(course.lateDb, -300.0) << rate;
  }
}

INSTANTIATE_TEST_SUITE_P(EveryMode, LimiterCorners,
                         testing::Combine(testing::Values(MasterLimiter::kSlowI,
                                                          MasterLimiter::kSlowII,
                                                          MasterLimiter::kFast),
                                          testing::Values(0.0, 36.0)));

}  // namespace
}  // namespace orvantesco
