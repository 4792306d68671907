#include "fx/BiquadDesign.h"

#include <gtest/gtest.h>

#include <complex>
#include <numbers>

namespace orvantesco {
namespace {

double gainAt(const BiquadSection& section, double fraction) {
  const std::complex<double> z = std::polar(1.0, -2.0 * std::numbers::pi * fraction);
  return std::abs((section.b0 + z * (section.b1 + z * section.b2)) /
                  (section.a0 + z * (section.a1 + z * section.a2)));
}

bool isStable(const BiquadSection& section) {
  const double a1 = section.a1 / section.a0;
  const double a2 = section.a2 / section.a0;
  return std::fabs(a2) < 1.0 && std::fabs(a1) < 1.0 + a2;
}

TEST(BiquadDesign, bandsPassAndStopAtTheirEnds) {
  const SectionShape shape = shapeSection(0.1, 2.0);
  EXPECT_NEAR(gainAt(lowpassSection(shape), 0.0), 1.0, 1e-12);
  EXPECT_NEAR(gainAt(lowpassSection(shape), 0.5), 0.0, 1e-12);
  EXPECT_NEAR(gainAt(highpassSection(shape), 0.0), 0.0, 1e-12);
  EXPECT_NEAR(gainAt(highpassSection(shape), 0.5), 1.0, 1e-12);
  EXPECT_NEAR(gainAt(bandpassSection(shape), 0.1), 1.0, 1e-6);
  EXPECT_NEAR(gainAt(bandpassSection(shape), 0.0), 0.0, 1e-12);
  for (double fraction : {0.0, 0.03, 0.1, 0.3, 0.5}) {
    EXPECT_NEAR(gainAt(allpassSection(shape), fraction), 1.0, 1e-12);
  }
}

TEST(BiquadDesign, peaksAndShelvesHaveTheSquareOfTheirAmplitude) {
  const SectionShape shape = shapeSection(0.05, 3.0);
  for (double amplitude : {0.25, 1.0, 2.0}) {
    const double gain = amplitude * amplitude;
    EXPECT_NEAR(gainAt(peakSection(shape, amplitude), 0.05), gain, 1e-4);
    EXPECT_NEAR(gainAt(peakSection(shape, amplitude), 0.0), 1.0, 1e-9);
    EXPECT_NEAR(gainAt(lowShelfSection(shape, amplitude), 0.0), gain, 1e-9);
    EXPECT_NEAR(gainAt(lowShelfSection(shape, amplitude), 0.5), 1.0, 1e-9);
    EXPECT_NEAR(gainAt(highShelfSection(shape, amplitude), 0.0), 1.0, 1e-9);
    EXPECT_NEAR(gainAt(highShelfSection(shape, amplitude), 0.5), gain, 1e-9);
  }
}

TEST(BiquadDesign, theCornerIsHeldBetweenItsEnds) {
  EXPECT_EQ(holdCorner(-1.0), 0.0002);
  EXPECT_EQ(holdCorner(0.6), 20000.0 / 44100.0);
  EXPECT_EQ(holdCorner(0.2), 0.2);
  EXPECT_EQ(shapeSection(0.9, 2.0).cosine, shapeSection(20000.0 / 44100.0, 2.0).cosine);
  EXPECT_EQ(shapeSection(-0.9, 2.0).alpha, shapeSection(0.0002, 2.0).alpha);
}

TEST(BiquadDesign, everySectionIsStable) {
  for (double corner : {0.0002, 0.001, 0.1, 0.25, 0.4535}) {
    for (double divisor : {0.05, 1.0, 1.45, 9.45, 1000.0}) {
      const SectionShape shape = shapeSection(corner, divisor);
      EXPECT_TRUE(isStable(lowpassSection(shape)) && isStable(bandpassSection(shape)) &&
                  isStable(peakSection(shape, 4.0)) && isStable(peakSection(shape, 0.1)) &&
                  isStable(lowShelfSection(shape, 2.8)) && isStable(lowShelfSection(shape, 0.0)) &&
                  isStable(highShelfSection(shape, 2.8)) && isStable(highShelfSection(shape, -1.0)))
          << corner << " " << divisor;
    }
  }
}

}  // namespace
}  // namespace orvantesco
