#pragma once

#include "fx/VectorLength.h"

namespace orvantesco {

/// The amount of a shaper as one value for each of 32 samples, and what the curves take from it:
/// gain in front, trim behind, threshold of the fold. An amount that stands still is worked out
/// once. Audio thread.
class ShaperControls {
 public:
  ShaperControls() noexcept { clear(); }

  /// As newly built: all 1, nothing derived.
  void clear() noexcept;

  /// True if the last amount was this one, unmodulated: what was derived still holds.
  bool holds(double value) const noexcept { return isSteady && amount[0] == value; }
  /// The same amount, 0..1, for every sample.
  void setSteady(double value) noexcept;
  /// amount[i] = base + depth * source[i], held within 0..1.
  void modulate(const double* source, double depth, double base) noexcept;
  double firstAmount() const noexcept { return amount[0]; }

  /// Gain 1..17 and trim 1..1/4, both by the square of the amount.
  void deriveSaturate() noexcept;
  /// Gain 1..50, by the fourth power, and trim 1..1/3.
  void deriveRectify() noexcept;
  /// Gain 1..16 and a negative threshold, -1/6..-1/2.
  void deriveDestroy() noexcept;
  /// Gain 51..151, trim, and the threshold 1.25.
  void deriveNoise() noexcept;
  /// Gain 1..2.25.
  void deriveLofi() noexcept;

  const double* gainVector() const noexcept { return gain; }
  const double* trimVector() const noexcept { return trim; }
  const double* thresholdVector() const noexcept { return threshold; }

 private:
  struct Cell {
    double gain = 1.0;
    double trim = 1.0;
    double threshold = 1.0;
  };
  template <class Rule>
  void derive(Rule rule) noexcept;

  bool isSteady = false;
  alignas(32) double amount[kVectorLength] = {};
  alignas(32) double gain[kVectorLength] = {};
  alignas(32) double trim[kVectorLength] = {};
  alignas(32) double threshold[kVectorLength] = {};
};

}  // namespace orvantesco
