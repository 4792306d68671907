#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "fx/IppBiquad.h"
#include "master/ReverbTestSupport.h"

namespace orvantesco::testing_support {

/// Settings in the block's own units.
struct AmbienceSetting {
  double size = 2.3;
  double feedback = 0.7;
  double drift = 0.3;
  double damping = 0.7;
};

/// The ambience written down sample by sample. The low-passes are the block's own, which have
/// their own tests.
class AmbienceModel {
 public:
  explicit AmbienceModel(double rateHz) : rate(rateHz), ratio(rateHz / 44100.0) {}

  Stereo run(const AmbienceSetting& setting, const Stereo& in) {
    for (IppBiquad* filter : {&left, &right}) filter->setCutoff(setting.damping);
    Stereo out;
    for (size_t at = 0; at < in.left.size(); at += kVectorLength) {
      block(setting, &in.left[at], &in.right[at], out);
    }
    return out;
  }

  double x = 0.0, y = 1.0, z = 1.0;

 private:
  static constexpr double kLength[4] = {4297.0, 1669.0, 2753.0, 3581.0};

  struct Line {
    Signal written;
    double delay = 0.0;
    double memory = 0.0;

    double at(long index) const { return index < 0 ? 0.0 : written[static_cast<size_t>(index)]; }

    /// Reads what lies behind sample `now`.
    double read(long now, double target, double rateHz) {
      const double a = std::exp(-2.0 * std::numbers::pi / (0.005 * rateHz));
      delay = target * (1.0 - a) + a * delay;
      const long k = static_cast<long>(delay);
      const double f = delay - static_cast<double>(k);
      memory = (at(now - k) - memory) * ((1.0 - f) / (1.0 + f)) + at(now - k - 1);
      return memory;
    }
  };

  void oscillate() {
    const double q = 32.0 * 8.7e-05 / ratio;
    const double dx = -(y + z), dy = 0.15 * y + x, dz = (x - 10.0) * z + 0.2;
    x += dx * q;
    y += dy * q;
    z += dz * q;
  }

  void block(const AmbienceSetting& s, const double* inL, const double* inR, Stereo& out) {
    oscillate();
    const double depth = 0.05 * s.drift;
    const double swing[4] = {x * 0.05107000097632408 * depth, y * 0.06790000200271606 * depth, 0.0,
                             0.0};
    for (size_t n = 0; n < kVectorLength; ++n) {
      feed[0][n] += inL[n];
      feed[1][n] += inR[n];
    }
    left.process(feed[0].data(), nullptr);
    right.process(feed[1].data(), nullptr);
    double r[4][kVectorLength];
    for (size_t i = 0; i < 4; ++i) {
      Line& line = lines[i];
      const auto first = static_cast<long>(line.written.size());
      line.written.insert(line.written.end(), feed[i].begin(), feed[i].end());
      const double target =
          std::max((std::min(s.size, 6.0) + swing[i]) * kLength[i] * ratio, rate * 0.0001);
      for (long n = 0; n < kVectorLength; ++n) r[i][n] = line.read(first + n, target, rate);
    }
    for (size_t n = 0; n < kVectorLength; ++n) {
      const double sum = -0.5 * (r[0][n] + r[1][n] + r[2][n] + r[3][n]);
      for (size_t i = 0; i < 4; ++i) feed[i][n] = (r[i][n] + sum) * -std::min(s.feedback, 0.998);
      out.left.push_back(2.0 * r[0][n]);
      out.right.push_back(2.0 * r[1][n]);
    }
  }

  double rate;
  double ratio;
  std::array<Line, 4> lines;
  std::array<std::array<double, kVectorLength>, 4> feed{};
  IppBiquad left{false, kLowpassFilter, 1, 24.0};
  IppBiquad right{false, kLowpassFilter, 1, 24.0};
};

}  // namespace orvantesco::testing_support
