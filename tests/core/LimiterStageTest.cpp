// The limiter at its place in the engine: alignment, switching, rates and cuts of blocks.

#include "core/LimiterStage.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "params/ParamIndex.h"
#include "support/EngineRig.h"

namespace orvantesco {
namespace {

constexpr int kOff = 0;
constexpr int kModes[] = {MasterLimiter::kSlowI, MasterLimiter::kSlowII, MasterLimiter::kFast};

/// What a mode does to a signal far below its limits: the make-up of the levelling.
double gainOf(int mode) {
  if (mode == MasterLimiter::kSlowI) return 1.4;
  return mode == MasterLimiter::kSlowII ? 1.05 : 1.0;
}

/// A rig whose wet signal is the input behind the input filter, and an echo.
struct WetRig : EngineRig {
  explicit WetRig(double rate = 48000.0) : EngineRig(rate) {
    set(kDryLevel, 0);
    set(kWetLevel, 100);
    set(kInput, 3);
    set(kDirectIn, 100);
    set(kDelayTimeL, 20);
  }
};

StereoBuffer rendered(EngineRig& rig, const StereoBuffer& input, int blockLength = 512) {
  rig.warmUp(0.3);
  StereoBuffer audio = input;
  rig.render(audio, blockLength);
  return audio;
}

double largest(const std::vector<double>& samples) {
  double highest = 0.0;
  for (const double x : samples) highest = std::max(highest, std::abs(x));
  return highest;
}

TEST(LimiterStage, LeavesDryAndLimitedWetAlignedInEveryModeAtEveryRate) {
  for (const double rate : {44100.0, 48000.0, 96000.0}) {
    const StereoBuffer input = noise(20000, 0.004);
    WetRig dryRig(rate), wetRig(rate);
    dryRig.set(kDryLevel, 100);
    dryRig.set(kWetLevel, 0);
    const StereoBuffer dry = rendered(dryRig, input);
    const StereoBuffer wet = rendered(wetRig, input);
    EXPECT_GT(largest(wet.left), 0.001);
    for (const int mode : kModes) {
      WetRig rig(rate);
      rig.set(kDryLevel, 100);
      rig.set(kLimiterOn, mode);
      StereoBuffer both = rendered(rig, input);
      for (std::size_t i = 0; i < both.size(); ++i) {
        both.left[i] -= dry.left[i] + gainOf(mode) * wet.left[i];
        both.right[i] -= dry.right[i] + gainOf(mode) * wet.right[i];
      }
      EXPECT_LT(largest(both.left), 1e-14) << "mode " << mode << " at " << rate;
      EXPECT_LT(largest(both.right), 1e-14) << "mode " << mode << " at " << rate;
      EXPECT_EQ(rig.host.latencySamples(), 32 + static_cast<int>(rate / 1000.0));
    }
  }
}

TEST(LimiterStage, BoostsAndLimitsTheWetSignalAlone) {
  const StereoBuffer input = noise(30000, 0.9);
  for (const int mode : kModes) {
    WetRig rig;
    rig.set(kLimiterOn, mode);
    rig.set(kLimiterLevel, 36);
    const StereoBuffer out = rendered(rig, input);
    const double loudest = std::max(largest(out.left), largest(out.right));
    EXPECT_GT(loudest, 0.3) << mode;
    EXPECT_LT(loudest, 1.5) << mode;
    rig.set(kWetLevel, 0);
    rig.set(kDryLevel, 100);
    EXPECT_LE(largest(rendered(rig, input).left), 0.9) << "the dry signal is left alone";
  }
}

TEST(LimiterStage, SwitchingFastInAndOutChangesNoSampleBelowTheLimit) {
  for (const double rate : {44100.0, 48000.0, 96000.0}) {
    WetRig plain(rate), switched(rate);
    for (WetRig* rig : {&plain, &switched}) rig->warmUp(0.3);
    StereoBuffer expected = noise(30000, 0.1);
    StereoBuffer audio = expected;
    plain.render(expected);
    for (int block = 0; block < 300; ++block) {
      if (block % 7 == 0) switched.set(kLimiterOn, block % 2 == 0 ? MasterLimiter::kFast : kOff);
      switched.block(audio, static_cast<std::size_t>(block) * 100, 100);
    }
    double worst = 0.0;
    for (std::size_t i = 0; i < audio.size(); ++i) {
      worst = std::max(worst, std::abs(audio.left[i] - expected.left[i]));
    }
    EXPECT_LT(worst, 1e-15) << rate;
  }
}

TEST(LimiterStage, SwitchingWithinItsLookaheadLosesNoSampleEither) {
  for (const double rate : {44100.0, 48000.0, 96000.0}) {
    for (const int subBlocksOut : {1, 2, 3, 4}) {
      WetRig plain(rate), switched(rate);
      for (WetRig* rig : {&plain, &switched}) rig->warmUp(0.3);
      StereoBuffer expected = noise(6400, 0.1);
      StereoBuffer audio = expected;
      plain.render(expected);
      for (int subBlock = 0; subBlock < 200; ++subBlock) {
        const bool isOut = subBlock % 20 < subBlocksOut;
        switched.set(kLimiterOn, isOut ? kOff : MasterLimiter::kFast);
        switched.block(audio, static_cast<std::size_t>(subBlock) * 32, 32);
      }
      double worst = 0.0;
      for (std::size_t i = 0; i < audio.size(); ++i) {
        worst = std::max(worst, std::abs(audio.left[i] - expected.left[i]));
      }
      EXPECT_LT(worst, 1e-15) << rate << " " << subBlocksOut;
    }
  }
}

TEST(LimiterStage, FadesFromModeToModeButStartsAtOnce) {
  WetRig rig;
  StereoBuffer audio(48000);
  std::fill(audio.left.begin(), audio.left.end(), 0.01);
  audio.right = audio.left;
  rig.warmUp(0.3);
  StereoBuffer steady = audio;
  rig.render(steady);
  rig.set(kLimiterOn, MasterLimiter::kFast);
  StereoBuffer started = audio;
  rig.render(started);
  const auto [low, high] = std::minmax_element(started.left.begin() + 4800, started.left.end());
  EXPECT_GT(*low, 0.5 * *high);
  rig.set(kLimiterOn, MasterLimiter::kSlowII);
  StereoBuffer changed = audio;
  rig.render(changed);
  const auto silent = std::find(changed.left.begin(), changed.left.end(), 0.0);
  ASSERT_NE(silent, changed.left.end());
  EXPECT_NEAR(static_cast<double>(silent - changed.left.begin()) / 48000.0, 0.05, 0.003);
  EXPECT_GT(changed.left[4800 + 640], 0.9 * changed.left.back());
  EXPECT_NEAR(changed.left.back(), 1.05 * started.left.back(), 1e-3);
}

TEST(LimiterStage, BringsNothingOldBackWhenItIsSwitchedOnAgain) {
  WetRig used, fresh;
  used.set(kLimiterOn, MasterLimiter::kSlowI);
  used.set(kLimiterLevel, 36);
  rendered(used, noise(40000, 0.9));
  used.set(kLimiterOn, kOff);
  used.warmUp(1.0);
  used.set(kLimiterLevel, 0);
  fresh.warmUp(1.0);
  for (WetRig* rig : {&used, &fresh}) rig->set(kLimiterOn, MasterLimiter::kSlowI);
  StereoBuffer a = noise(4800, 0.004), b = a;
  used.render(a);
  fresh.render(b);
  for (std::size_t i = 0; i < a.size(); ++i) a.left[i] -= b.left[i];
  EXPECT_LT(largest(a.left), 1e-9);
  EXPECT_GT(largest(b.left), 1e-3);
}

TEST(LimiterStage, GivesTheSameBitsHoweverBlocksAreCut) {
  const StereoBuffer input = noise(24000, 0.9);
  const auto run = [&](auto blockLength) {
    WetRig rig;
    rig.set(kLimiterOn, MasterLimiter::kSlowI);
    rig.set(kLimiterLevel, 20);
    rig.warmUp(0.3);
    rig.set(kLimiterOn, MasterLimiter::kSlowII);
    StereoBuffer audio = input;
    for (std::size_t done = 0; done < audio.size();) {
      const int count = std::min(static_cast<int>(audio.size() - done), blockLength());
      rig.block(audio, done, count);
      done += static_cast<std::size_t>(count);
    }
    return audio;
  };
  std::minstd_rand random(3);
  const StereoBuffer expected = run([] { return 512; });
  const StereoBuffer ones = run([] { return 1; });
  const StereoBuffer mixed = run([&] { return 1 + static_cast<int>(random() % 700); });
  EXPECT_EQ(expected.left, ones.left);
  EXPECT_EQ(expected.right, ones.right);
  EXPECT_EQ(expected.left, mixed.left);
}

TEST(LimiterStage, SoundsAsAFreshOneAfterAChangeOfRate) {
  for (const int mode : kModes) {
    WetRig used(96000.0), fresh(44100.0);
    for (WetRig* rig : {&used, &fresh}) {
      rig->set(kLimiterOn, mode);
      rig->set(kLimiterLevel, 24);
    }
    rendered(used, noise(20000, 0.9));
    used.host.setSampleRate(44100.0);
    StereoBuffer a = noise(30000, 0.9, 5), b = a;
    used.render(a);
    fresh.render(b);
    EXPECT_EQ(a.left, b.left) << mode;
  }
}

TEST(LimiterStage, StaysFiniteBehindHugeInput) {
  for (const int mode : kModes) {
    WetRig rig;
    rig.set(kLimiterOn, mode);
    rig.set(kLimiterLevel, 36);
    StereoBuffer huge(4800);
    huge.left.assign(4800, 1e300);
    rendered(rig, huge);
    StereoBuffer after = noise(48000, 0.5);
    rig.render(after);
    const auto isFinite = [](double x) { return std::isfinite(x); };
    EXPECT_TRUE(std::all_of(after.left.begin(), after.left.end(), isFinite)) << mode;
    EXPECT_LT(largest({after.left.end() - 4800, after.left.end()}), 2.0) << mode;
    EXPECT_GT(largest({after.left.end() - 4800, after.left.end()}), 0.1) << mode;
  }
}

}  // namespace
}  // namespace orvantesco
