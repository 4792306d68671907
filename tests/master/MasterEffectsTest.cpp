// What holds for every master effect and the limiter: one channel, a reset, rates of any host.
#include <gtest/gtest.h>

#include <functional>

#include "core/MasterEffectScale.h"
#include "master/MasterEffectFactory.h"
#include "master/MasterLimiter.h"
#include "master/ReverbTestSupport.h"

namespace orvantesco {
namespace {

using namespace testing_support;

/// Positions of the menu, and the limiter behind them.
constexpr int kBlocks = kMasterEffects + 1;
constexpr int kVectors = 1200;  ///< longer than the pre-delay of the hall at any rate

std::unique_ptr<DSPShell> created(int position) {
  if (position > kMasterEffects) {
    auto limiter = std::make_unique<MasterLimiter>();
    limiter->setBoostDb(12.0);
    return limiter;
  }
  auto block = createMasterEffect(position - 1);
  constexpr double kKnobs[] = {0.25, 0.5, 0.6, 0.45};
  for (int knob = 0; knob < kMasterFxKnobs; ++knob) {
    block->setParam(knob, masterFxScale(position, knob, kKnobs[knob]).native);
  }
  return block;
}

TEST(MasterEffects, OneChannelAloneHearsSilenceOnTheOther) {
  for (int position = 1; position <= kBlocks; ++position) {
    const auto one = created(position), two = created(position);
    Stereo in = stereoNoise(kVectors, 0.5);
    in.right.assign(in.right.size(), 0.0);
    const Stereo expected = runStereo(*two, in);
    Signal out(in.left.size());
    for (size_t at = 0; at < out.size(); at += kVectorLength) {
      one->process(&in.left[at], &out[at]);
    }
    EXPECT_EQ(largestDifference(out, expected.left), 0.0) << position;
    EXPECT_GT(peakOf(out), 0.03) << position;
  }
}

/// Two blocks that went equally far, one with noise and one with silence, and are then cleared by
/// the same operation: nothing of the noise may be heard.
void expectForgotten(const std::function<void(DSPShell&)>& clear) {
  for (int position = 1; position <= kBlocks; ++position) {
    const auto used = created(position), quiet = created(position);
    runStereo(*used, stereoNoise(1201, 1.0));
    runStereo(*quiet, stereoSilence(1201));
    clear(*used);
    clear(*quiet);
    const Stereo in = stereoNoise(kVectors, 0.5, 9);
    EXPECT_EQ(largestDifference(runStereo(*used, in), runStereo(*quiet, in)), 0.0) << position;
  }
}

TEST(MasterEffects, AClearedOneHasForgottenWhatItHeard) {
  expectForgotten([](DSPShell& block) { block.clearState(); });
}

TEST(MasterEffects, RatesBelow32000And192000HzAreThoseOfTheEngine) {
  struct Pair {
    double host, engine;
  };
  for (const Pair& rates : {Pair{22050.0, 32000.0}, Pair{192000.0, 96000.0}}) {
    for (int position = 1; position <= kBlocks; ++position) {
      const auto sounded = [&](double rate) {
        const ScopedRate scope(rate);
        return runStereo(*created(position), stereoNoise(kVectors, 0.5));
      };
      const Stereo out = sounded(rates.host);
      EXPECT_EQ(largestDifference(out, sounded(rates.engine)), 0.0) << position;
      EXPECT_GT(largestMagnitude(out), 0.03) << position;
    }
  }
}

}  // namespace
}  // namespace orvantesco
