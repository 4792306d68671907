#pragma once

namespace orvantesco {

/// The stages of the state-variable filter: two integrators by the trapezoidal rule in a loop that
/// is solved for the current sample, so that no unit delay detunes it (V. Zavalishin, "The Art of
/// VA Filter Design", chapter 4). With g = tan(pi * corner / rate) and the damping k,
///
///     hp = (x - k s1 - s2) / (1 + g k)      bp = g hp + s1      lp = g bp + s2
///     s1' = g hp + bp                       s2' = g bp + lp
///
/// where the damping k counts from g on: k = g + 1/Q. Stable for 1/Q above 0; a saturated stage
/// also for 1/Q below 0, where it oscillates within bounds.

/// Lowest corner of the state-variable filter in halves of the rate: 44 Hz at 44100 Hz.
inline constexpr double kSvfLowestCorner = 0.002;

/// tan(pi / 2 * w), for a corner of w halves of the rate, w within 0..0.91: a rational form with
/// the tangent's pole at w = 1. Relative error below 2e-7.
double svfTangent(double w) noexcept;

/// tanh(x) by its continued fraction (J. Lambert), cut behind the seventh power: within 2e-7
/// up to |x| = 2.5 and within 1.1e-4 up to 5. Far outside it grows like x / 28: a loop through it
/// loses amplitude however far it is driven.
inline double padeTanh(double x) noexcept {
  // Products of u = x x instead of nested ones: half of the waiting.
  const double u = x * x;
  const double uu = u * u;
  const double over = (x * uu) * (u + 378.0) + x * (17325.0 * u + 135135.0);
  const double under = (28.0 * u + 3150.0) * uu + (62370.0 * u + 135135.0);
  return over / under;
}

/// Coefficients of one stage, with what its memory needs for a step solved ahead: the next s1 is
/// `fromInput` (x - s2) + `fromMemory` s1, which waits for two operations instead of six.
struct SvfStage {
  SvfStage() = default;
  SvfStage(double tangent, double inverseQ) noexcept;

  double g = 0.0;
  double k = 1.0;
  double h = 1.0;           ///< 1 / (1 + g k)
  double fromInput = 0.0;   ///< 2 g h
  double fromMemory = 1.0;  ///< 1 - 2 g h k
};

struct SvfMemory {
  double s1 = 0.0;
  double s2 = 0.0;
};

/// What a stage makes of one sample.
struct SvfOutputs {
  double highpass = 0.0;
  double bandpass = 0.0;
  double lowpass = 0.0;
};

/// One sample through a stage; with `saturates` the first integrator holds a tanh of its value.
template <bool saturates>
inline SvfOutputs stepSvf(const SvfStage& stage, SvfMemory& memory, double x) noexcept {
  const double driven = x - memory.s2;
  const double highpass = (driven - stage.k * memory.s1) * stage.h;
  const double bandpass = highpass * stage.g + memory.s1;
  const double lowpass = bandpass * stage.g + memory.s2;
  const double next = stage.fromInput * driven + stage.fromMemory * memory.s1;
  memory.s1 = saturates ? padeTanh(next) : next;
  memory.s2 = bandpass * stage.g + lowpass;
  return {highpass, bandpass, lowpass};
}

}  // namespace orvantesco
