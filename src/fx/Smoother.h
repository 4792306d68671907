#pragma once

#include "fx/Runaway.h"
#include "fx/VectorLength.h"

namespace orvantesco {

/// One-pole low-pass that takes the steps out of control values: `y = a y + (1 - a) x`.
///
///     a = exp(-2 pi / (timeMs * 0.001 * sampleRate)), limited to 0..1
///
/// After timeMs a step is within exp(-2 pi), 0.2 %, of its end. `ramp` gives n steps in closed
/// form, from two tables, so that no sample waits for the one before it:
///
///     y[i] = a^(i+1) y0 + (1 - a) x (1 + a + ... + a^i),  i = 0..n-1;  y[n-1] is the new state
///
/// A target that is not finite or beyond the runaway limit drops the state to 0. Audio thread;
/// the tables belong to the object, so nothing here allocates.
class Smoother {
 public:
  static constexpr double kDefaultTimeMs = 5.0;

  Smoother() noexcept : Smoother(kDefaultTimeMs) {}
  explicit Smoother(double ms) noexcept { setTime(ms); }

  /// Time in ms of a smoother that is ticked or ramped once per sample. The state stays.
  void setTime(double ms) noexcept;
  /// Time in ms of a smoother that is ticked once per block of 32 samples. The state stays.
  void setBlockTime(double ms) noexcept { setTime(ms / kVectorLength); }
  /// Takes the coefficient anew from the time last set and starts at 0, as a new smoother does.
  void rateChanged() noexcept;

  /// Sets the state: what follows glides from here.
  void snap(double value) noexcept;
  double state() const noexcept { return y; }

  /// One step towards x. The offset of 1e-15 keeps the state out of the denormal range.
  double tick(double x) noexcept {
    if (!isSane(x)) return dropState();
    y = x * gain + coefficient * y + kOffset;
    return y - kOffset;
  }

  /// 32 ticks over a vector, in place: out[i] = tick(in[i]) to within rounding, at about a
  /// quarter of their time, since only every fourth sample waits for the one before it.
  void tickVector(double* srcDst) noexcept;

  /// n steps (1..32) towards a constant x; the returned vector of n values is the smoother's own
  /// and stands until the next call. A smoother at rest costs a compare, or a fill after a move.
  const double* ramp(double x, int n = kVectorLength) noexcept;

  /// The same recursion in single precision, every operation rounded to float, without rest.
  const float* rampFloat(float x, int n = kVectorLength) noexcept;

  /// True if the state is x within the tolerance of rest: `ramp(x)` would be constant x, so that
  /// a caller may use x itself instead.
  bool isSettled(double x) const noexcept;

  /// Distance, relative to the target, at which `ramp` takes the state for arrived and gives the
  /// target itself. The default lies within the rounding of the recursion; a glide whose last
  /// stretch costs more than it is heard may stop earlier.
  void setRestTolerance(double relative) noexcept { restTolerance = relative; }

 private:
  static constexpr double kOffset = 1e-15;

  double dropState() noexcept;
  const double* rest(double x) noexcept;

  double timeMs = kDefaultTimeMs;
  double restTolerance = 2e-13;

  double coefficient = 0.0;
  double gain = 1.0;

  double y = 0.0;
  double filledWith = 0.0;  ///< value of all 32 entries of `values`, if isFilled
  bool isFilled = false;

  alignas(32) double powers[kVectorLength] = {};  ///< a^(i+1)
  alignas(32) double sums[kVectorLength] = {};    ///< 1 + a + ... + a^i
  alignas(32) double values[kVectorLength] = {};
  alignas(32) float powersF[kVectorLength] = {};
  alignas(32) float sumsF[kVectorLength] = {};
  alignas(32) float valuesF[kVectorLength] = {};
};

}  // namespace orvantesco
