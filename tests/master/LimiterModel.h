#pragma once

#include <array>
#include <cmath>
#include <vector>

#include "master/MasterTestSupport.h"

namespace orvantesco::testing_support {

/// A peak follower, one sample after the other.
struct PlainFollower {
  double slow = 0.0, fast = 0.0;

  double tick(double x, double rise, double fall, double hold) {
    if (!(std::fabs(x) > 1e-15)) return x;
    if (x < fast) x = (fast - x) * hold + x;
    fast = x;
    const double c = x > slow ? rise : fall;
    x = (slow - x) * c + x;
    slow = x;
    return x;
  }
};

/// The limiter, one sample after the other; only the choice of the louder channel, the gain of the
/// fade and the change of mode go by vectors of 32.
class LimiterModel {
 public:
  explicit LimiterModel(int firstMode, double boostDb = 0.0) : mode(firstMode), next(firstMode) {
    setBoostDb(boostDb);
    for (size_t i = 1; i < 5; ++i) followers[i] = {1.0, 1.0};
    delay = static_cast<size_t>(std::floor(sampleRate / 1000.0));
    meanRate = 1.0 - coefficient(0.5);
    fadeStep = 32.0 / (sampleRate * 0.05);
  }

  void setBoostDb(double db) { boost = std::exp(db * 0.1151292546497); }

  void fadeTo(int newMode) {
    next = newMode;
    fading = -1;
  }

  Stereo run(const Stereo& in) {
    Stereo out{Signal(in.left.size()), Signal(in.left.size())};
    for (size_t at = 0; at < in.left.size(); at += 32) vector(in, out, at);
    return out;
  }

 private:
  static double coefficient(double seconds) { return std::exp(-1.0 / (sampleRate * seconds)); }

  void vector(const Stereo& in, Stereo& out, size_t at) {
    if (switching) {
      switching = false;
      mode = next;
    } else {
      chooseChannel(in, at);
      for (size_t i = at; i < at + 32; ++i) sample(in, out, i);
    }
    if (fading == 0) return;
    const double gain = fadeGain();
    for (size_t i = at; i < at + 32; ++i) {
      out.left[i] *= gain;
      out.right[i] *= gain;
    }
  }

  double fadeGain() {
    value += fading * fadeStep;
    if (value <= 0.0) {
      value = 0.0;
      switching = true;
      fading = 1;
    } else if (value >= 1.0) {
      value = 1.0;
      fading = 0;
    }
    return value * value;
  }

  void chooseChannel(const Stereo& in, size_t at) {
    double peakLeft = 0.0, peakRight = 0.0;
    for (size_t i = at; i < at + 32; ++i) {
      peakLeft = std::max(peakLeft, std::fabs(in.left[i]));
      peakRight = std::max(peakRight, std::fabs(in.right[i]));
    }
    hearsRight = peakRight > peakLeft;
  }

  void sample(const Stereo& in, Stereo& out, size_t i) {
    double left = in.left[i] * boost;
    double right = in.right[i] * boost;
    double sum = mode == 1 ? left + right : 1.09 * (hearsRight ? right : left);
    if (mode < 3) level(left, right, sum);
    lefts.push_back(left);
    rights.push_back(right);
    sums.push_back(sum);
    double t = std::max(1.0, std::fabs(sum));
    double gain = 1.0 / followers[3].tick(t, halfMs, 0.0, ms3);
    if (mode > 1) {
      t = std::max(1.0, std::fabs(gain * back(sums)));
      gain /= followers[4].tick(t, 0.0, 0.0, ms3);
    }
    out.left[i] = gain * back(lefts);
    out.right[i] = gain * back(rights);
  }

  void level(double& left, double& right, double& sum) {
    double t = followers[0].tick(sum, 0.0, s1, ms10);
    meanSquare += (sum * sum - meanSquare) * meanRate;
    if (mode == 1) t *= 0.708;
    t = std::max(0.25, t - std::sqrt(meanSquare) + 1.0);
    const double slowEnvelope = 1.0 / t;
    const double shape = mode == 1 ? 5.0 : 1.5;
    t = std::max(1.0, std::fabs(slowEnvelope * shape * sum));
    t = followers[1].tick(t, ms100, s1, ms10);
    double gain = 1.0 / t;
    gain *= shape * 0.1 + 0.9;
    sum *= gain;
    t = std::max(1.0, std::fabs(slowEnvelope * sum));
    t = followers[2].tick(t, ms20, ms100, ms10);
    for (int twice = 0; twice < 2; ++twice) {
      sum *= 1.0 / t;
      gain *= 1.0 / t;
    }
    left *= gain;
    right *= gain;
  }

  double back(const std::vector<double>& line) const {
    return line.size() > delay ? line[line.size() - 1 - delay] : 0.0;
  }

  const double halfMs = coefficient(0.0005), ms3 = coefficient(0.003), ms10 = coefficient(0.01);
  const double ms20 = coefficient(0.02), ms100 = coefficient(0.1), s1 = coefficient(1.0);
  double meanRate = 0.0;
  int mode, next;
  double boost = 1.0;
  std::array<PlainFollower, 5> followers{};
  double meanSquare = 1.0;
  std::vector<double> lefts, rights, sums;
  size_t delay = 0;
  bool hearsRight = false;
  int fading = 0;
  bool switching = false;
  double value = 1.0;
  double fadeStep = 0.0;
};

}  // namespace orvantesco::testing_support
