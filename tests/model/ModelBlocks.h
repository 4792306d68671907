#pragma once

#include <array>
#include <cmath>
#include <numbers>

namespace orvantesco::model {

/// The engine works in steps of 32 samples, and that can be heard: a loop is never shorter, and
/// controls are read once a step.
constexpr int kStep = 32;

using Block = std::array<double, kStep>;

struct StereoBlock {
  Block left{};
  Block right{};
};

/// What the model derives from the host's rate.
struct Rates {
  double host = 44100.0;
  double clamped = 44100.0;  ///< 32000..96000, the rate of all processing

  explicit Rates(double hostRate) : host(hostRate) {
    clamped = std::fmin(std::fmax(hostRate, 32000.0), 96000.0);
  }
  int lookahead() const { return static_cast<int>(std::floor(clamped / 1000.0)); }
  int latency() const { return kStep + lookahead(); }
  double minDelay() const { return clamped * 0.001; }
  long ringLength() const { return static_cast<long>(clamped * 8.0 + 1000.0); }
};

/// One-pole glide, y = a y + (1 - a) x, a = exp(-2 pi / (time in samples)).
struct Glide {
  double a = 0.0;
  double y = 0.0;

  void setTime(double ms, double sampleRate) {
    a = std::exp(-2.0 * std::numbers::pi / (ms * 0.001 * sampleRate));
  }
  double tick(double x) {
    y = a * y + (1.0 - a) * x;
    return y;
  }
  /// A step's worth of ticks towards one x, in closed form: summed up tick by tick, a delay time
  /// would be rounded often enough for the difference to be heard by a comparison to 1e-9.
  Block ramp(double x) {
    Block out{};
    double power = 1.0;
    double sum = 0.0;
    for (double& value : out) {
      sum += power;
      power *= a;
      value = power * y + (1.0 - a) * x * sum;
    }
    y = out.back();
    return out;
  }
};

/// Gain of a level in dB; the bottom of a level's range is silence.
inline double gainOfDb(double db) { return std::exp(db * 0.1151292546497); }
inline double gainOrSilence(double db) { return db <= -60.0 ? 0.0 : gainOfDb(db); }

}  // namespace orvantesco::model
