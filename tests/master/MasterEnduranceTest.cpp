// The settings of the master section that could drift or build up, each for ten minutes of audio.
#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "core/MasterEffectScale.h"
#include "master/MasterEffectFactory.h"
#include "master/MasterLimiter.h"
#include "master/ReverbTestSupport.h"

namespace orvantesco {
namespace {

using namespace testing_support;

constexpr int kMinute = static_cast<int>(60 * 44100 / kVectorLength);  // vectors

/// Draws that cost little: twice 26 million of them are needed.
class Draws {
 public:
  double next() {
    state = state * 1664525U + 1013904223U;
    return static_cast<double>(state) / 2147483648.0 - 1.0;
  }

 private:
  std::uint32_t state = 1;
};

/// What a block gave in one minute.
struct Minute {
  double highest = 0.0;  ///< infinite where a sample was no number
  double energy = 0.0;

  void take(const double* samples) {
    for (int i = 0; i < kVectorLength; ++i) {
      if (!std::isfinite(samples[i])) highest = kInfinity;
      highest = std::max(highest, std::fabs(samples[i]));
      energy += samples[i] * samples[i];
    }
  }

  double levelDb() const { return 10.0 * std::log10(energy / (2.0 * kMinute * kVectorLength)); }
};

/// Runs a minute of noise of an amplitude that `level` gives for a vector's number.
template <class Level>
Minute minuteOf(DSPShell& block, Draws& draws, Level level) {
  double left[kVectorLength], right[kVectorLength], outL[kVectorLength], outR[kVectorLength];
  Minute minute;
  for (int v = 0; v < kMinute; ++v) {
    const double amplitude = level(v);
    for (int i = 0; i < kVectorLength; ++i) {
      left[i] = amplitude * draws.next();
      right[i] = amplitude * draws.next();
    }
    block.process(left, right, outL, outR);
    minute.take(outL);
    minute.take(outR);
  }
  return minute;
}

std::vector<Minute> tenMinutes(DSPShell& block, double noiseMinutes) {
  Draws draws;
  std::vector<Minute> minutes;
  for (int m = 0; m < 10; ++m) {
    minutes.push_back(minuteOf(block, draws, [&](int) { return m < noiseMinutes ? 1.0 : 0.0; }));
  }
  return minutes;
}

struct Knobs {
  double percent[kMasterFxKnobs];
};

std::unique_ptr<DSPShell> masterEffect(int menuPosition, const Knobs& knobs) {
  std::unique_ptr<DSPShell> block = createMasterEffect(menuPosition - 1);
  for (int knob = 0; knob < kMasterFxKnobs; ++knob) {
    block->setParam(knob, masterFxScale(menuPosition, knob, 0.01 * knobs.percent[knob]).native);
  }
  return block;
}

/// Five minutes of noise, which have arrived at a level after the first, and five of decay.
void expectLevelThenDecay(DSPShell& block, double highest) {
  const std::vector<Minute> minutes = tenMinutes(block, 5);
  for (std::size_t m = 0; m < minutes.size(); ++m) {
    EXPECT_LT(minutes[m].highest, highest) << "minute " << m;
  }
  for (const std::size_t m : {2U, 3U, 4U}) {
    EXPECT_NEAR(minutes[m].levelDb(), minutes[1].levelDb(), 1.0) << "minute " << m;
  }
  for (std::size_t m = 6; m < minutes.size(); ++m) {
    EXPECT_LT(minutes[m].energy, minutes[m - 1].energy) << "minute " << m;
  }
}

// The shortest lines turn most often, eight to twenty-two times a second, with the most feedback
// and the low-pass wide open: it peaks a little above 1 below its corner. Two of the lines drift as
// far as they can, and a read that moves is no all-pass any more.
TEST(MasterEndurance, OrvantAtItsShortestWithAllFeedbackAndDriftForTenMinutes) {
  const auto ambience = masterEffect(kMasterOrvant, {{0.0, 100.0, 100.0, 0.0}});
  expectLevelThenDecay(*ambience, 100.0);
}

// Sixteen lines in float with gains up to 0.9952 at every frequency and seven reads that jump: what
// the rounding and the swing add has thirty seconds to pile up.
TEST(MasterEndurance, ReverbOfThirtySecondsUndampedForTenMinutes) {
  const auto reverb = masterEffect(kMasterReverb, {{100.0, 0.0, 0.0, 0.0}});
  expectLevelThenDecay(*reverb, 100.0);
}

// All four recursions in a row behind 36 dB, with jumps of the input between full scale, -120 dB,
// near silence that freezes them, and what a slot in runaway may send.
TEST(MasterEndurance, LimiterInItsSlowestModeDrivenByJumpsForTenMinutes) {
  MasterLimiter limiter;
  limiter.setMode(MasterLimiter::kSlowI, false);
  limiter.setBoostDb(36.0);
  Draws draws;
  const Minute first = minuteOf(limiter, draws, [](int) { return 1.0; });
  for (int m = 1; m < 9; ++m) {
    const Minute minute = minuteOf(limiter, draws, [](int v) {
      static constexpr double kSteps[] = {1.0, 1e-6, 0.5, 1e-17, 1e4, 0.0};
      return kSteps[v / 777 % 6];
    });
    EXPECT_LT(minute.highest, 60.0) << "minute " << m;
  }
  const Minute last = minuteOf(limiter, draws, [](int) { return 1.0; });
  EXPECT_NEAR(last.levelDb(), first.levelDb(), 1.0) << "nothing has stuck";
}

}  // namespace
}  // namespace orvantesco
