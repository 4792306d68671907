#include "core/MasterEffectScale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <string>
#include <vector>

#include "fx/LPHP.h"

namespace orvantesco {
namespace {

struct Row {
  int menuPosition;
  int knob;
  double x;
  double shown;
  double native;
};

void expectAll(const std::vector<Row>& rows) {
  for (const auto& [menuPosition, knob, x, shown, native] : rows) {
    const MasterFxValue value = masterFxScale(menuPosition, knob, x);
    EXPECT_NEAR(value.shown, shown, 1e-9 * std::abs(shown) + 1e-12) << menuPosition << knob << x;
    EXPECT_NEAR(value.native, native, 1e-9) << menuPosition << knob << x;
  }
}

TEST(MasterEffectScale, Orvant) {
  expectAll({{1, 0, 0.0, 0.0, 1.2},
             {1, 0, 1.0, 100.0, 5.2},
             {1, 1, 0.0, 0.0, 0.0005},
             {1, 1, 1.0, 100.0, 0.9999998749749844},
             {1, 2, 0.3, 30.0, 0.3},
             {1, 3, 0.0, 20000.0, 1.0},
             {1, 3, 1.0, 200.0, 0.231378213159759}});
}

TEST(MasterEffectScale, ReverbAndRoom) {
  expectAll({{2, 0, 0.5, 8.25, 8.25},
             {2, 0, 1.0, 30.0, 30.0},
             {2, 1, 0.2, 100.0, 4410.0},
             {2, 3, 1.0, 100.0, 1.0},
             {2, 3, 0.5, 50.0, 0.9330329915368074},
             {3, 0, 1.0, 4.0, 4.0},
             {3, 1, 0.5, 100.0, 4410.0},
             {3, 3, 1.0, 100.0, 0.9},
             {3, 3, 0.5, 50.0, 0.8397296923831267}});
}

TEST(MasterEffectScale, TheHighPassOfTheReverbsRunsFrom50To2000Hz) {
  for (const int menuPosition : {2, 3}) {
    EXPECT_NEAR(masterFxScale(menuPosition, 2, 0.0).shown, 50.0, 1e-3);
    EXPECT_NEAR(masterFxScale(menuPosition, 2, 1.0).shown, 2000.0, 0.05);
    EXPECT_NEAR(masterFxScale(menuPosition, 2, 1.0).native, 0.61568910657988, 1e-14);
    for (double x = 0.0; x <= 1.0; x += 0.01) {
      const MasterFxValue value = masterFxScale(menuPosition, 2, x);
      EXPECT_NEAR(value.shown / (50.0 * std::pow(400.0, value.native)), 1.0, 1e-5);
    }
  }
}

TEST(MasterEffectScale, Equalisers) {
  expectAll({{4, 0, 1.0, 18.0, 2.8183829312644537},
             {4, 0, 0.5, 0.0, 1.0},
             {4, 1, 1.0, 5000.0, 5000.0},
             {4, 2, 0.0, -18.0, 0.0},
             {4, 3, 0.0, -18.0, 0.35481338923357547},
             {5, 0, 0.75, 9.0, 0.75},
             {5, 1, 0.0, 50.0, 50.0},
             {5, 2, 0.25, -9.0, 0.25},
             {5, 3, 1.0, 20000.0, 20000.0},
             {6, 0, 1.0, 18.0, 2.8183829312644537},
             {6, 1, 1.0, 1000.0, 1000.0},
             {6, 2, 0.5, 0.0, 1.0},
             {6, 3, 0.0, 250.0, 250.0},
             {6, 3, 1.0, 7500.0, 7500.0}});
}

TEST(MasterEffectScale, Drive) {
  expectAll({{7, 0, 1.0, 20000.0, 1.0},
             {7, 1, 0.5, 1000.0, 0.5},
             {7, 2, 0.4, 40.0, 0.4},
             {7, 3, 0.1, 1.0, 1.0},
             {7, 3, 0.29, 1.0, 1.0},
             {7, 3, 1.0, 5.0, 5.0}});
  EXPECT_EQ(masterFxLabel(7, 2, 1.0), "");
}

constexpr int kBinsOf = 4096;

/// What the drive's filters let through of a tone far below the high-pass, in dB; `bin` of 4096.
double heardDb(int mode, int bin) {
  LPHP pair;
  pair.setParam(0, 0.75);
  pair.setParam(1, 1.0);
  pair.setParam(3, mode);
  const double w = 2.0 * std::numbers::pi * bin / kBinsOf;
  std::complex<double> sum = 0.0;
  for (int i = 0; i < 16 * kBinsOf; i += kVectorLength) {
    double vector[kVectorLength];
    for (int k = 0; k < kVectorLength; ++k) vector[k] = 0.01 * std::sin(w * (i + k));
    pair.process(vector, nullptr);
    for (int k = 0; k < kVectorLength && i >= 15 * kBinsOf; ++k) {
      sum += vector[k] * std::polar(1.0, -w * (i + k));
    }
  }
  return 20.0 * std::log10(std::abs(sum));
}

TEST(MasterEffectScale, TheModesOfTheDriveAreNamedByTheSlopesThatRun) {
  for (int mode = 0; mode < 6; ++mode) {
    const std::string name(masterFxLabel(7, 3, mode));
    const bool isSeries = name.substr(name.find('-')) == "-S";
    EXPECT_EQ(isSeries, mode < 3) << name;
    if (!isSeries) continue;
    // Over the octave that ends two octaves below the corner, 4.5 kHz.
    const double slope = heardDb(mode, 104) - heardDb(mode, 52);
    EXPECT_NEAR(slope / std::stod(name), 1.0, 0.1) << name;
  }
}

TEST(MasterEffectScale, OffAndBeyondTheMenuTheKnobIsItself) {
  expectAll({{0, 0, 0.3, 30.0, 0.3}, {8, 0, 0.3, 30.0, 0.3}, {1, 4, 0.3, 30.0, 0.3}});
  EXPECT_TRUE(masterFxStyle(0, 0).caption.empty());
}

}  // namespace
}  // namespace orvantesco
