#pragma once

#include <array>
#include <vector>

#include "model/ModelBlocks.h"

namespace orvantesco::model {

/// One second-order section, transposed direct form II: when taps change in mid-signal the
/// memory stays, and what is heard then depends on the form.
class Section {
 public:
  /// (b0 + b1/z + b2/z^2) / (a0 + a1/z + a2/z^2); a0 need not be 1.
  void setTaps(const std::array<double, 6>& taps);
  void clear() { s1 = s2 = 0.0; }
  double tick(double x);

 private:
  double b0 = 1.0, b1 = 0.0, b2 = 0.0, a1 = 0.0, a2 = 0.0;
  double s1 = 0.0, s2 = 0.0;
};

/// Butterworth low-pass of even order by the bilinear transform with the corner prewarped, as a
/// cascade of sections designed in long double.
class ButterworthLowpass {
 public:
  /// `corner` is a fraction of the sample rate, below 0.5.
  ButterworthLowpass(int order, double corner);
  double tick(double x);

 private:
  std::vector<Section> sections;
};

/// The low-pass or high-pass in the echo: two equal sections of Q 1.45, whose corner glides by
/// one step of a one-pole glide at every second step of 32 samples.
class EchoFilter {
 public:
  enum class Kind { lowpass, highpass };

  EchoFilter(Kind which, double sampleRate);
  /// As a fraction of the sample rate.
  void setCorner(double fraction);
  void reset();
  void process(Block& samples);

 private:
  void design(double fraction);

  Kind kind = Kind::lowpass;
  double target = 0.0;
  Glide glide;
  int calls = 0;
  bool dirty = true;
  std::array<Section, 2> sections;
};

/// Takes off the constant part that a loop of high gain would pile up.
struct DcBlocker {
  double x1 = 0.0;
  double y1 = 0.0;
  double tick(double x) {
    y1 = 0.9999 * y1 + x - x1;
    x1 = x;
    return y1;
  }
};

}  // namespace orvantesco::model
