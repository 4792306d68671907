#pragma once

#include <complex>
#include <functional>
#include <numbers>

#include "master/MasterTestSupport.h"

namespace orvantesco::testing_support {

/// One filter of the equaliser, one sample after the other.
class PlainBand {
 public:
  enum Kind { kLow, kPeak, kHigh };

  PlainBand(Kind kindOfBand, double hz) : kind(kindOfBand) { setHz(hz); }

  void setHz(double hz) { fraction = static_cast<double>(static_cast<float>(hz / sampleRate)); }
  /// A shelf's amplitude, or a peak's position 0..1.
  void setGain(double value) { gain = kind == kPeak ? 2.0 * value - 1.0 : value; }

  double tick(double x) {
    const size_t vector = at / 32;
    if (at++ % 32 == 0 && (vector == 0 || vector % 2 == 1)) control();
    const double y = b[0] * x + s1;
    s1 = b[1] * x - a[1] * y + s2;
    s2 = b[2] * x - a[2] * y;
    return y;
  }

  /// |H| in dB at rest.
  double responseDb(double hz) {
    design(fraction, gain);
    const auto z = std::polar(1.0, -2.0 * std::numbers::pi * hz / sampleRate);
    const auto top = b[0] + b[1] * z + b[2] * z * z;
    const auto bottom = 1.0 + a[1] * z + a[2] * z * z;
    return 20.0 * std::log10(std::abs(top / bottom));
  }

 private:
  static double glide(double& state, double target, double samples) {
    const double k = std::exp(-2.0 * std::numbers::pi / samples);
    state = target * (1.0 - k) + k * state;
    return state;
  }

  void control() {
    const double corner = glide(fractionNow, fraction, 0.001 * sampleRate);
    design(corner, glide(gainNow, gain, 0.005 * sampleRate / 32.0));
  }

  void design(double corner, double A) {
    const double held = std::clamp(corner, 0.0002, 20000.0 / 44100.0);
    const float omega = static_cast<float>(2.0 * std::numbers::pi * held);
    const double c = static_cast<double>(cosf(omega));
    const double al =
        static_cast<double>(static_cast<float>(static_cast<double>(sinf(omega)) / 1.45));
    if (kind == kPeak) {
      const double boost = std::exp(18.0 * A / 2 * 0.1151292546497);
      take({1 + al * boost, -2 * c, 1 - al * boost}, {1 + al / boost, -2 * c, 1 - al / boost});
      return;
    }
    const double s = 2.0 * std::sqrt(A) * al;
    const double m = kind == kLow ? -c : c;  // the high shelf mirrors the low one
    const double turn = kind == kLow ? 1.0 : -1.0;
    take({A * ((A + 1) + (A - 1) * m + s), turn * 2 * A * ((A - 1) + (A + 1) * m),
          A * ((A + 1) + (A - 1) * m - s)},
         {(A + 1) - (A - 1) * m + s, turn * -2 * ((A - 1) - (A + 1) * m),
          (A + 1) - (A - 1) * m - s});
  }

  void take(std::array<double, 3> numerator, std::array<double, 3> denominator) {
    for (size_t i = 0; i < 3; ++i) {
      b[i] = numerator[i] / denominator[0];
      a[i] = denominator[i] / denominator[0];
    }
  }

  Kind kind;
  double fraction = 0.0, gain = 1.0;
  double fractionNow = 0.0, gainNow = 0.0;
  std::array<double, 3> b{}, a{};
  double s1 = 0.0, s2 = 0.0;
  size_t at = 0;
};

/// One channel of the equaliser.
class PlainEq {
 public:
  explicit PlainEq(int eqForm) : form(eqForm) {}

  void setParam(int index, double value) {
    using Setter = std::function<void(double)>;
    const auto gainOf = [](PlainBand& band) { return Setter([&](double v) { band.setGain(v); }); };
    const auto hzOf = [](PlainBand& band) { return Setter([&](double v) { band.setHz(v); }); };
    const Setter table[3][4] = {{gainOf(low), hzOf(midA), gainOf(midA), gainOf(high)},
                                {gainOf(midA), hzOf(midA), gainOf(midB), hzOf(midB)},
                                {gainOf(low), hzOf(low), gainOf(high), hzOf(high)}};
    table[form][index](value);
  }

  double tick(double x) {
    if (form == 0) return high.tick(low.tick(midA.tick(x)));
    if (form == 1) return midB.tick(midA.tick(x));
    return high.tick(low.tick(x));
  }

  double responseDb(double hz) {
    if (form == 0) return midA.responseDb(hz) + low.responseDb(hz) + high.responseDb(hz);
    if (form == 1) return midA.responseDb(hz) + midB.responseDb(hz);
    return low.responseDb(hz) + high.responseDb(hz);
  }

 private:
  int form;
  PlainBand low{PlainBand::kLow, 500.0};
  PlainBand midA{PlainBand::kPeak, 0.0};
  PlainBand midB{PlainBand::kPeak, 0.0};
  PlainBand high{PlainBand::kHigh, 3000.0};
};

}  // namespace orvantesco::testing_support
