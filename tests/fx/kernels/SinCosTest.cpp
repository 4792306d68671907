#include "fx/kernels/SinCos.h"

#include <limits>
#include <numbers>

#include "fx/kernels/KernelTestSupport.h"

namespace orvantesco {
namespace {

using testing_support::AtEachLevel;
using testing_support::kLevels;
using testing_support::levelName;
using testing_support::same;

constexpr auto kLength = static_cast<size_t>(kVectorLength);

struct Angles {
  double src[kLength] = {};
  double sine[kLength] = {};
  double cosine[kLength] = {};
  void run() { vecSinCos(src, sine, cosine); }
  double worstError() const {
    long double worst = 0.0L;
    for (size_t i = 0; i < kLength; ++i) {
      const long double x = src[i];
      worst =
          std::max({worst, std::fabs(sine[i] - std::sin(x)), std::fabs(cosine[i] - std::cos(x))});
    }
    return static_cast<double>(worst);
  }
};

class SinCos : public AtEachLevel {};

TEST_P(SinCos, staysWithinItsErrorOverItsWholeRange) {
  std::mt19937 engine(11);
  double worst = 0.0;
  for (double range : {1e-9, 0.8, 4.0, 40.0, 1e3, kSinCosRange}) {
    std::uniform_real_distribution<double> uniform(-range, range);
    Angles angles;
    for (int vector = 0; vector < 1000; ++vector) {
      for (double& x : angles.src) x = uniform(engine);
      angles.run();
      worst = std::max(worst, angles.worstError());
    }
  }
  EXPECT_LT(worst, kSinCosError);
}

TEST_P(SinCos, holdsAtTheSeamsOfTheQuarterTurns) {
  double worst = 0.0;
  for (int turn = -4000; turn < 4000; ++turn) {
    Angles angles;
    const double seam = turn * (std::numbers::pi / 4.0);
    for (size_t i = 0; i < kLength; ++i)
      angles.src[i] = seam + (static_cast<double>(i) - 16.0) * 1e-9;
    angles.src[16] = std::nextafter(seam, 1e9);
    angles.run();
    worst = std::max(worst, angles.worstError());
  }
  EXPECT_LT(worst, kSinCosError);
}

TEST_P(SinCos, worksInPlace) {
  Angles apart;
  for (size_t i = 0; i < kLength; ++i) apart.src[i] = 0.37 * static_cast<double>(i) - 5.0;
  Angles over = apart;
  apart.run();
  vecSinCos(over.src, over.src, over.cosine);
  EXPECT_TRUE(std::equal(apart.sine, apart.sine + kLength, over.src));
  vecSinCos(apart.src, over.sine, apart.src);
  EXPECT_TRUE(std::equal(apart.cosine, apart.cosine + kLength, apart.src));
}

TEST_P(SinCos, givesWhatTheLibraryGivesBeyondTheRange) {
  for (double far : {2e6, -1e15, HUGE_VAL, std::numeric_limits<double>::quiet_NaN()}) {
    Angles angles;
    for (size_t i = 0; i < kLength; ++i) angles.src[i] = static_cast<double>(i);
    angles.src[31] = far;
    angles.run();
    for (size_t i = 0; i < kLength; ++i) {
      EXPECT_TRUE(same(angles.sine[i], std::sin(angles.src[i])) &&
                  same(angles.cosine[i], std::cos(angles.src[i])))
          << far;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, SinCos, ::testing::ValuesIn(kLevels), levelName);

TEST(SinCosLevels, giveTheSameBits) {
  std::mt19937 engine(12);
  std::uniform_real_distribution<double> uniform(-100.0, 100.0);
  for (int vector = 0; vector < 1000; ++vector) {
    Angles reference;
    for (double& x : reference.src) x = uniform(engine);
    kernels::forceLevel(kernels::Level::kScalar);
    reference.run();
    for (kernels::Level level : kLevels) {
      if (!kernels::forceLevel(level)) continue;
      Angles angles = reference;
      angles.run();
      ASSERT_EQ(std::memcmp(&angles, &reference, sizeof angles), 0) << kernels::nameOf(level);
    }
  }
  kernels::forgetLevel();
}

}  // namespace
}  // namespace orvantesco
