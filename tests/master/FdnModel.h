#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "fx/IppBiquad.h"
#include "master/ReverbTestSupport.h"

namespace orvantesco::testing_support {

/// Settings of a delay network in its own units: seconds, samples at 44100 Hz, 0..1, 0..1.
struct FdnSetting {
  double decaySeconds = 12.0;
  double preDelay = 1102.0;
  double highPass = 0.0;
  double damping = 0.49 / 0.89;
};

/// One line, sample by sample.
struct FdnModelLine {
  FdnModelLine(int lengthAt44100, bool isSwung, double rate, int number)
      : length(lengthAt44100), delay(static_cast<int>(length * rate / 44100.0)) {
    const double longest = (length + (isSwung ? 6.0 : 0.0)) * 2.17687074829932 + 1.0;
    ring.assign(static_cast<size_t>(longest) + 11, 0.0F);
    position = static_cast<float>(static_cast<int>(ring.size()) - delay);
    const double w = 2.0 * std::numbers::pi * 2.0 * 50.0 / rate;
    const double phase = 2.0 * std::numbers::pi * 45.0 * number / 360.0;
    y1 = std::sin(phase);
    y2 = std::sin(phase - w);
    factor = 2.0 * std::cos(w);
    restart = std::sin(std::numbers::pi / 2.0 - w);
  }

  void setDecay(const FdnSetting& setting, double rate) {
    const float damping = 0.99F - 0.89F * static_cast<float>(setting.damping);
    const auto inverse = static_cast<double>(static_cast<float>(1.0 / setting.decaySeconds));
    const double r = rate / 44100.0 * 0.5 + 0.5;
    const double a = static_cast<double>(damping) / r;
    const double g = std::pow(10.0, inverse * (-3.0 / rate) * r * length);
    const double c = std::min(0.98, std::log(g) * (1.0 - 1.0 / (a * a)) * 0.575646273248511);
    gain = static_cast<float>((1.0 - c) * g);
    coefficient = static_cast<float>(-c);
  }

  float at(long index) const {
    const long size = static_cast<long>(ring.size());
    return ring[static_cast<size_t>(((index % size) + size) % size)];
  }

  float oscillate() {
    double y = factor * y1 - y2;
    if (y >= 1.0) {
      y2 = restart;
      return static_cast<float>(y1 = 1.0);
    }
    y2 = y <= -1.0 ? -restart : y1;
    return static_cast<float>(y1 = std::max(y, -1.0));
  }

  float readSwung(long count) {
    if (count % 50 == 0) {
      const float q = position + oscillate() * 6.0F;
      read = static_cast<long>(std::floor(q));
      fraction = q - std::floor(q);
      position += 50.0F;
      const auto size = static_cast<float>(ring.size());
      if (position >= size) position -= size;
    }
    allPass = at(read) + (at(read + 1) - allPass) * fraction;
    ++read;
    return allPass;
  }

  float readStill() const { return at(static_cast<long>(write) - delay); }

  void put(float sample) {
    ring[write] = sample;
    write = (write + 1) % ring.size();
  }

  int length;
  int delay;
  std::vector<float> ring;
  size_t write = 0;
  long read = 0;
  float position = 0.0F;
  float fraction = 0.0F;
  float allPass = 0.0F;
  float damped = 0.0F;
  float gain = 0.0F;
  float coefficient = 0.0F;
  double y1 = 0.0, y2 = 0.0, factor = 0.0, restart = 0.0;
};

/// The delay network written down sample by sample. The input's high-pass is the block's own,
/// which has its own tests.
class FdnModel {
 public:
  FdnModel(int lineCount, int swungCount, double rateHz)
      : n(lineCount), m(swungCount), rate(rateHz) {
    static const int kShort[] = {601, 691, 773, 839, 919, 997, 1061, 1093, 1129, 1151, 1171, 1187};
    static const int kLong[] = {919,  997,  1061, 1093, 1129, 1151, 1171, 1187,
                                1213, 1237, 1259, 1283, 1303, 1319, 1327, 1361};
    for (int i = 0; i < n; ++i) {
      lines.emplace_back(n <= 12 ? kShort[i] : kLong[i], i < m, rate, i);
    }
  }

  Stereo run(const FdnSetting& setting, const Stereo& in) {
    filter.setCutoff(setting.highPass);
    for (FdnModelLine& line : lines) line.setDecay(setting, rate);
    Signal mono(in.left.size());
    for (size_t i = 0; i < mono.size(); ++i) mono[i] = in.left[i] + in.right[i] + 1e-15;
    for (size_t i = 0; i < mono.size(); i += kVectorLength) filter.process(&mono[i], nullptr);
    const auto late = static_cast<size_t>(setting.preDelay * rate / 44100.0);
    Stereo out;
    for (size_t i = 0; i < mono.size(); ++i) {
      step(i >= late ? static_cast<float>(mono[i - late] * 0.1667) : 0.0F, out);
    }
    return out;
  }

 private:
  void step(float feed, Stereo& out) {
    std::vector<float> v;
    float left = 0.0F, right = 0.0F, sum = 0.0F;
    for (int i = 0; i < n; ++i) {
      FdnModelLine& line = lines[static_cast<size_t>(i)];
      const float x = i < m ? line.readSwung(count) : line.readStill();
      line.damped = line.gain * x - line.coefficient * line.damped;
      v.push_back(line.damped);
      const float signLeft = i % 2 == 0 ? 1.0F : -1.0F;
      const bool isFlipped = i % 4 == 1 || i % 4 == 2;
      left += signLeft * line.damped;
      right += (isFlipped ? -signLeft : signLeft) * line.damped;
      sum += line.damped;
    }
    const float s = static_cast<float>(-2.0 / n) * sum;
    for (size_t i = 0; i < v.size(); ++i) lines[i].put(v[(i + 1) % v.size()] + s + feed);
    ++count;
    out.left.push_back(static_cast<double>(left));
    out.right.push_back(static_cast<double>(right));
  }

  int n;
  int m;
  double rate;
  long count = 0;
  std::vector<FdnModelLine> lines;
  IppBiquad filter{false, kHighpassFilter, 1, 24.0};
};

}  // namespace orvantesco::testing_support
