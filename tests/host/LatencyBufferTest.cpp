#include "host/LatencyBuffer.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace orvantesco {
namespace {

std::vector<double> ramp(int frames) {
  std::vector<double> values(static_cast<std::size_t>(frames));
  std::iota(values.begin(), values.end(), 1.0);
  return values;
}

std::vector<double> delayedRamp(int frames, int delay) {
  std::vector<double> values = ramp(frames);
  values.insert(values.begin(), static_cast<std::size_t>(delay), 0.0);
  values.resize(static_cast<std::size_t>(frames));
  return values;
}

TEST(LatencyBuffer, DelaysByExactlyTheLatencyInBlocksOfAnyLength) {
  for (const int latency : {0, 1, 76, 300}) {
    LatencyBuffer buffer(1);
    buffer.resize(latency);
    const std::vector<double> in = ramp(1000);
    std::vector<double> out(1000, -1.0);
    for (int done = 0, length = 1; done < 1000; done += length, length = length % 97 + 1) {
      length = std::min(length, 1000 - done);
      buffer.process(0, in.data() + done, out.data() + done, length);
    }
    EXPECT_EQ(out, delayedRamp(1000, latency)) << latency;
  }
}

TEST(LatencyBuffer, WorksInPlaceAndKeepsChannelsApart) {
  LatencyBuffer buffer(2);
  buffer.resize(3);
  std::vector<double> left = ramp(50);
  std::vector<double> right(50, 0.0);
  buffer.process(0, left.data(), left.data(), 50);
  buffer.process(1, right.data(), right.data(), 50);
  EXPECT_EQ(left, delayedRamp(50, 3));
  EXPECT_EQ(right, std::vector<double>(50, 0.0));
}

TEST(LatencyBuffer, HoldsNothingAfterClear) {
  LatencyBuffer buffer(1);
  buffer.resize(8);
  const std::vector<double> in = ramp(8);
  std::vector<double> out(8);
  buffer.process(0, in.data(), out.data(), 8);
  buffer.clear();
  buffer.process(0, in.data(), out.data(), 8);
  EXPECT_EQ(out, std::vector<double>(8, 0.0));
}

}  // namespace
}  // namespace orvantesco
