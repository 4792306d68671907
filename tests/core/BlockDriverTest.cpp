// The re-blocking driver: latency, alignment, cuts of blocks, transport, bad input.

#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <algorithm>
#include <limits>
#include <random>

#include "params/ParamIndex.h"
#include "support/EngineRig.h"
#include "support/OrvantescoProbe.h"

namespace orvantesco {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// A rig that passes the dry signal alone, at unity.
struct DryRig : EngineRig {
  explicit DryRig(double rate = 48000.0, OrvantescoOptions options = seeded())
      : EngineRig(rate, options) {
    set(kDryLevel, 100);
    set(kWetLevel, 0);
    warmUp();
  }
};

bool allFinite(const StereoBuffer& audio) {
  const auto finite = [](double x) { return std::isfinite(x); };
  return std::all_of(audio.left.begin(), audio.left.end(), finite) &&
         std::all_of(audio.right.begin(), audio.right.end(), finite);
}

double peak(const std::vector<double>& samples) {
  double highest = 0.0;
  for (const double x : samples) highest = std::max(highest, std::abs(x));
  return highest;
}

TEST(BlockDriver, ReportsRingsPlusOneMillisecondOfTheClampedRate) {
  const std::pair<double, int> cases[] = {{44100, 76}, {48000, 80},   {96000, 128}, {192000, 128},
                                          {22050, 64}, {768000, 128}, {8000, 64}};
  for (const auto& [rate, latency] : cases) {
    EngineRig rig(rate);
    StereoBuffer audio(64);
    rig.render(audio);
    EXPECT_EQ(rig.host.latencySamples(), latency) << rate;
  }
}

TEST(BlockDriver, DelaysTheDrySignalByExactlyTheReportedLatency) {
  for (const double rate : {44100.0, 48000.0, 96000.0}) {
    for (const int blockLength : {1, 32, 512}) {
      DryRig rig(rate);
      const StereoBuffer input = noise(2000);
      StereoBuffer output = input;
      rig.render(output, blockLength);
      const auto latency = static_cast<std::ptrdiff_t>(rig.host.latencySamples());
      EXPECT_TRUE(std::equal(input.left.begin(), input.left.end() - latency,
                             output.left.begin() + latency));
      EXPECT_TRUE(std::equal(input.right.begin(), input.right.end() - latency,
                             output.right.begin() + latency));
    }
  }
}

TEST(BlockDriver, GivesTheSameBitsHoweverBlocksAreCut) {
  const auto rendered = [](auto blockLength) {
    EngineRig rig;
    for (int slot = 0; slot < 4; ++slot) {
      rig.set(kSlotOn + slot, 1);
      rig.set(kDelayMode + slot, slot);
      rig.set(kFeedback + slot, 90);
    }
    rig.set(kReverseDelayTrigger + 1, 1);
    StereoBuffer audio = noise(60000);
    for (std::size_t done = 0; done < audio.size();) {
      const auto left = static_cast<int>(audio.size() - done);
      const int count = std::min(left, blockLength());
      rig.block(audio, done, count);
      done += static_cast<std::size_t>(count);
    }
    return audio;
  };
  const StereoBuffer reference = rendered([] { return 512; });
  std::minstd_rand random(7);
  const StereoBuffer ones = rendered([] { return 1; });
  const StereoBuffer whole = rendered([] { return 4096; });
  const StereoBuffer mixed = rendered([&] { return 1 + static_cast<int>(random() % 4096); });
  for (const StereoBuffer* other : {&ones, &whole, &mixed}) {
    EXPECT_EQ(reference.left, other->left);
    EXPECT_EQ(reference.right, other->right);
  }
}

TEST(BlockDriver, FeedsBothSidesFromAMonoInput) {
  OrvantescoOptions options = EngineRig::seeded();
  options.mainInputs = 1;
  DryRig rig(48000.0, options);
  StereoBuffer audio = noise(1000);
  const std::vector<double> input = audio.left;
  std::vector<double> outL(1000), outR(1000);
  double* inputs[] = {audio.left.data(), nullptr};
  double* outputs[] = {outL.data(), outR.data()};
  rig.effect.ProcessDoubleReplacing(inputs, outputs, 1000);
  EXPECT_EQ(outL, outR);
  EXPECT_TRUE(std::equal(input.begin(), input.end() - 80, outL.begin() + 80));
}

TEST(BlockDriver, ReadsSamplesThatAreNotFiniteAsSilence) {
  DryRig rig;
  StereoBuffer audio(2000);
  std::fill(audio.left.begin() + 100, audio.left.begin() + 200, kNaN);
  std::fill(audio.right.begin() + 100, audio.right.begin() + 200,
            std::numeric_limits<double>::infinity());
  rig.render(audio);
  EXPECT_EQ(peak(audio.left), 0.0);
  EXPECT_EQ(peak(audio.right), 0.0);
}

TEST(BlockDriver, StaysFiniteBehindHugeInputAndRecovers) {
  EngineRig rig;
  rig.set(kFeedback, 160);
  rig.warmUp();
  StereoBuffer huge(4800);
  huge.left.assign(4800, 1e300);
  huge.right.assign(4800, -1e300);
  rig.render(huge);
  StereoBuffer silence(48000);
  rig.render(silence);
  EXPECT_TRUE(allFinite(silence));
  rig.set(kFeedback, 0);
  StereoBuffer after(96000);
  rig.render(after);
  EXPECT_LT(peak({after.left.end() - 4800, after.left.end()}), 1e-3);
}

TEST(BlockDriver, RunsAtEveryRateFrom8To768kHz) {
  for (const double rate : {8000.0, 11025.0, 22050.0, 32000.0, 176400.0, 384000.0, 768000.0}) {
    EngineRig rig(rate);
    StereoBuffer audio = noise(20000);
    rig.render(audio);
    EXPECT_TRUE(allFinite(audio)) << rate;
    EXPECT_GT(peak(audio.left), 0.01) << rate;
  }
}

TEST(BlockDriver, ABlockWithoutFramesMovesNothing) {
  const auto rendered = [](bool withEmptyBlocks) {
    EngineRig rig;
    StereoBuffer audio = noise(8000);
    for (std::size_t done = 0; done < audio.size(); done += 100) {
      if (withEmptyBlocks) {
        double* channels[] = {nullptr, nullptr};
        rig.effect.ProcessDoubleReplacing(channels, channels, 0);
      }
      rig.block(audio, done, 100);
    }
    return audio.left;
  };
  EXPECT_EQ(rendered(false), rendered(true));
}

TEST(BlockDriver, IsSilentDuringABulkOperationAndGoesOnWhereItStood) {
  DryRig rig;
  const StereoBuffer input = noise(640);
  StereoBuffer first = input;
  rig.render(first);
  {
    const auto loading = OrvantescoProbe{rig.effect}.loadingPreset();
    StereoBuffer during = noise(320);
    rig.render(during);
    EXPECT_EQ(peak(during.left), 0.0);
    EXPECT_EQ(peak(during.right), 0.0);
  }
  StereoBuffer after(320);
  rig.render(after);
  // What stood in the rings and in the dry FIFO comes out now.
  EXPECT_TRUE(std::equal(input.left.end() - 80, input.left.end(), after.left.begin()));
}

TEST(BlockDriver, CountsAllHostFramesOfABlockAsPositionsOfTheirOwn) {
  EngineRig rig;
  rig.host.setTempo(120.0);
  StereoBuffer audio(4096);
  rig.block(audio, 0, 4096);
  // The last sub-block ran at the last frame of the block.
  EXPECT_DOUBLE_EQ(OrvantescoProbe{rig.effect}.songPosition(), 4095.0 * 2.0 / 48000.0);
}

TEST(BlockDriver, PutsTheThreadsDenormalModeBack) {
  EngineRig rig;
  const unsigned before = _mm_getcsr();
  StereoBuffer audio(512);
  rig.render(audio);
  EXPECT_EQ(_mm_getcsr(), before);
}

TEST(BlockDriver, KeepsTheRateInForceWhenTheHostNamesNone) {
  EngineRig rig;
  rig.warmUp();
  rig.host.setSampleRate(kNaN);
  StereoBuffer audio = noise(4800);
  rig.render(audio);
  rig.host.setSampleRate(0.0);
  rig.render(audio);
  EXPECT_TRUE(allFinite(audio));
  EXPECT_EQ(rig.host.latencySamples(), 80);
  EXPECT_GT(peak(audio.left), 0.01);
}

TEST(BlockDriver, IgnoresTemposAndPositionsThatAreNone) {
  EngineRig rig;
  rig.set(kTimebase, 1);
  rig.host.setTempo(kNaN);
  StereoBuffer audio = noise(9600);
  rig.render(audio);
  rig.host.locate(kNaN);
  rig.render(audio);
  rig.host.setTempo(-1.0);
  rig.render(audio);
  EXPECT_TRUE(allFinite(audio));
}

TEST(BlockDriver, GlobalWidthOfZeroGivesMonoAndOf150NoDifferenceToMonoInput) {
  EngineRig rig;
  rig.set(kDryLevel, 0);
  rig.set(kInput, 3);
  rig.set(kDirectIn, 100);
  rig.set(kGlobalWidth, 0);
  rig.warmUp();
  StereoBuffer audio = noise(4800);
  rig.render(audio);
  EXPECT_GT(peak(audio.left), 0.01);
  for (std::size_t i = 0; i < audio.size(); ++i) {
    ASSERT_NEAR(audio.left[i], audio.right[i], 1e-12);
  }
}

}  // namespace
}  // namespace orvantesco
