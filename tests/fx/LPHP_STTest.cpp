#include "fx/LPHP_ST.h"

#include <gtest/gtest.h>

#include "fx/FxTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::noise;
using testing_support::ScopedRate;
using testing_support::Signal;

template <class Pair>
void adjust(Pair& pair) {
  pair.setParam(0, 0.3);
  pair.setParam(1, 0.8);
  pair.setParam(2, 0.5);
  pair.setParam(3, 4.0);
}

struct Channels {
  Signal left;
  Signal right;
};

Channels runStereo(DSPShell& block, Channels in) {
  Channels out{Signal(in.left.size()), Signal(in.right.size())};
  for (size_t at = 0; at < in.left.size(); at += kVectorLength) {
    block.process(&in.left[at], &in.right[at], &out.left[at], &out.right[at]);
  }
  return out;
}

TEST(LPHP_ST, isOnePairForEachChannel) {
  LPHP_ST stereo;
  LPHP left(false), right(true);
  adjust(stereo);
  adjust(left);
  adjust(right);
  const Channels out = runStereo(stereo, {noise(100, 1), noise(100, 2)});
  EXPECT_TRUE(out.left == testing_support::run(left, noise(100, 1)));
  EXPECT_TRUE(out.right == testing_support::run(right, noise(100, 2)));
}

TEST(LPHP_ST, worksInPlaceOnBothChannels) {
  LPHP_ST apart, inPlace;
  adjust(apart);
  adjust(inPlace);
  const Channels expected = runStereo(apart, {noise(30, 1), noise(30, 2)});
  Channels actual{noise(30, 1), noise(30, 2)};
  for (size_t at = 0; at < actual.left.size(); at += kVectorLength) {
    inPlace.process(&actual.left[at], &actual.right[at], nullptr, nullptr);
  }
  EXPECT_TRUE(actual.left == expected.left);
  EXPECT_TRUE(actual.right == expected.right);
}

TEST(LPHP_ST, withoutARightOutputTheRightChannelIsDoneInPlace) {
  LPHP_ST apart, half;
  adjust(apart);
  adjust(half);
  const Channels expected = runStereo(apart, {noise(30, 1), noise(30, 2)});
  Channels in{noise(30, 1), noise(30, 2)};
  Signal left(in.left.size());
  for (size_t at = 0; at < left.size(); at += kVectorLength) {
    half.process(&in.left[at], &in.right[at], &left[at], nullptr);
  }
  EXPECT_TRUE(left == expected.left);
  EXPECT_TRUE(in.right == expected.right);
}

TEST(LPHP_ST, aOneChannelCallRunsTheLeftPair) {
  LPHP_ST stereo;
  LPHP left;
  adjust(stereo);
  adjust(left);
  EXPECT_TRUE(testing_support::run(stereo, noise(50)) == testing_support::run(left, noise(50)));
}

TEST(LPHP_ST, resetAndBypassDropTheTailsOfBothChannels) {
  LPHP_ST stereo;
  adjust(stereo);
  const Channels silence{Signal(32, 0.0), Signal(32, 0.0)};
  runStereo(stereo, {noise(50, 1), noise(50, 2)});
  runStereo(stereo, silence);  // the drive's own memory is one sample long
  stereo.setBypass(true);
  stereo.setBypass(false);
  const Channels out = runStereo(stereo, silence);
  EXPECT_TRUE(out.left == silence.left);
  EXPECT_TRUE(out.right == silence.right);
}

TEST(LPHP_ST, keepsItsOwnMixWhole) {
  LPHP_ST stereo;
  stereo.setParam(4, 0.25);
  EXPECT_EQ(stereo.wetShare(), 1.0);
}

TEST(LPHP_ST, afterARateChangeItIsAsNewlyBuilt) {
  LPHP_ST kept;
  adjust(kept);
  runStereo(kept, {noise(101, 1), noise(101, 2)});
  ScopedRate scope(96000.0);
  kept.rateChanged();
  kept.reset();
  LPHP_ST fresh;
  adjust(fresh);
  const Channels in{noise(60, 3), noise(60, 4)};
  const Channels actual = runStereo(kept, in);
  const Channels expected = runStereo(fresh, in);
  EXPECT_TRUE(actual.left == expected.left);
  EXPECT_TRUE(actual.right == expected.right);
}

TEST(LPHP_ST, withItsMemoriesClearedItIsAsNewlyBuilt) {
  LPHP_ST cleared, fresh;
  adjust(cleared);
  adjust(fresh);
  runStereo(cleared, {noise(31, 1), noise(31, 2)});
  cleared.clearMemories();
  const Channels in{noise(60, 3), noise(60, 4)};
  const Channels actual = runStereo(cleared, in);
  const Channels expected = runStereo(fresh, in);
  EXPECT_TRUE(actual.left == expected.left);
  EXPECT_TRUE(actual.right == expected.right);
}

TEST(LPHP_ST, badInputOfOneChannelLeavesNothingBehind) {
  LPHP_ST stereo;
  adjust(stereo);
  Channels in{noise(30, 1), noise(30, 2)};
  in.right[70] = NAN;
  runStereo(stereo, in);
  const Channels tail = runStereo(stereo, {Signal(3000 * 32, 0.0), Signal(3000 * 32, 0.0)});
  EXPECT_LT(std::fabs(tail.left.back()), 1e-9);
  EXPECT_LT(std::fabs(tail.right.back()), 1e-9);
}

}  // namespace
}  // namespace orvantesco
