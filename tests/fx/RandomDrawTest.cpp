#include "fx/RandomDraw.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace orvantesco {
namespace {

std::vector<int> draws(unsigned seed, int count) {
  RandomDraw random(seed);
  std::vector<int> drawn(static_cast<size_t>(count));
  for (int& draw : drawn) draw = random.next();
  return drawn;
}

TEST(RandomDraw, reachesBothEndsOfItsRangeAndNothingBeyond) {
  const auto drawn = draws(7, 1 << 20);
  const auto [low, high] = std::minmax_element(drawn.begin(), drawn.end());
  EXPECT_EQ(*low, 0);
  EXPECT_EQ(*high, 32767);
}

TEST(RandomDraw, oneSeedGivesOneSequence) {
  EXPECT_EQ(draws(42, 100), draws(42, 100));
  RandomDraw random(1);
  random.next();
  random.seed(42);
  EXPECT_EQ(random.next(), draws(42, 1)[0]);
}

TEST(RandomDraw, neighbouringSeedsDiffer) {
  std::vector<int> firsts;
  for (unsigned seed = 0; seed < 64; ++seed) firsts.push_back(draws(seed, 1)[0]);
  std::sort(firsts.begin(), firsts.end());
  EXPECT_GE(std::unique(firsts.begin(), firsts.end()) - firsts.begin(), 62);
}

TEST(RandomDraw, drawsAreSpreadEvenlyAndWithoutMemory) {
  constexpr int kCount = 1 << 18;
  const auto drawn = draws(3, kCount);
  std::vector<int> bins(64, 0);
  double sum = 0.0, lagged = 0.0;
  for (int i = 0; i < kCount; ++i) {
    const double centred = drawn[static_cast<size_t>(i)] / 32767.0 - 0.5;
    bins[static_cast<size_t>(drawn[static_cast<size_t>(i)] >> 9)]++;
    sum += centred;
    if (i > 0) lagged += centred * (drawn[static_cast<size_t>(i) - 1] / 32767.0 - 0.5);
  }
  EXPECT_NEAR(sum / kCount, 0.0, 0.003);
  EXPECT_NEAR(lagged / kCount * 12.0, 0.0, 0.01);
  for (int bin : bins) EXPECT_NEAR(bin, kCount / 64, 5 * 64);
}

}  // namespace
}  // namespace orvantesco
