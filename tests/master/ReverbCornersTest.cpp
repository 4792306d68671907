// Ten seconds at every corner of the reverbs' knobs.
#include <gtest/gtest.h>

#include <memory>

#include "master/AFdnReverb.h"
#include "master/Ambience.h"
#include "master/ReverbTestSupport.h"

namespace orvantesco {
namespace {

using namespace testing_support;

/// What the ends of the four knobs send.
struct Ends {
  double low[4];
  double high[4];
};

const Ends kAmbienceEnds = {{1.2, 0.0005, 0.0, 0.2314}, {5.2, 1.0, 1.0, 1.0}};
const Ends kHallEnds = {{1.0, 0.0, 0.0, 0.0}, {30.0, 22050.0, 0.6157, 1.0}};
const Ends kRoomEnds = {{1.0, 0.0, 0.0, 0.0}, {4.0, 8820.0, 0.6157, 0.9}};

/// Two seconds of noise and eight of silence at one corner.
void expectStable(DSPShell& block, const Ends& ends, int corner) {
  for (int knob = 0; knob < 4; ++knob) {
    block.setParam(knob, ((corner >> knob) & 1) != 0 ? ends.high[knob] : ends.low[knob]);
  }
  const auto second = static_cast<int>(sampleRate / kVectorLength);
  const Stereo sounding = runStereo(block, stereoNoise(2 * second, 1.0));
  const Stereo tail = runStereo(block, stereoSilence(8 * second));
  EXPECT_LT(largestMagnitude(sounding), 50.0) << corner;
  EXPECT_LT(largestMagnitude(tail), 50.0) << corner;
  const auto length = static_cast<size_t>(second) * kVectorLength;
  // Short decays have arrived at what keeps them out of the denormal range by then.
  const double early = std::max(levelDb(tail, length, 2 * length), -300.0);
  EXPECT_LT(levelDb(tail, 7 * length, 8 * length), early) << corner;
}

void expectAllStable(int corner) {
  Ambience ambience;
  AFdnReverb hall(16, 7, 1), room(10, 2, 4);
  expectStable(ambience, kAmbienceEnds, corner);
  expectStable(hall, kHallEnds, corner);
  expectStable(room, kRoomEnds, corner);
}

TEST(ReverbCorners, AllAreStableAndDecay) {
  const ScopedRate scope(32000.0);
  for (int corner = 0; corner < 16; ++corner) expectAllStable(corner);
}

TEST(ReverbCorners, TheLongestDecaysAreStableAt96000Hz) {
  const ScopedRate scope(96000.0);
  for (const int corner : {3, 15}) expectAllStable(corner);
}

}  // namespace
}  // namespace orvantesco
