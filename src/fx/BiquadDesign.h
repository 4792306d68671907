#pragma once

namespace orvantesco {

/// Second-order sections by the bilinear transform, after R. Bristow-Johnson, "Cookbook formulae
/// for audio EQ biquad filter coefficients". All are stable for alpha above 0 and a corner below
/// half the rate.

/// Highest corner of a recursive filter, as a fraction of the sample rate: 20 kHz at 44100 Hz.
/// Nearer to half the rate the designs lose their stability to rounding, beyond it at once.
inline constexpr double kCornerCeiling = 20000.0 / 44100.0;
/// Lowest corner, as a fraction of the sample rate.
inline constexpr double kCornerFloor = 0.0002;

/// ln(10) / 20, with just this precision.
inline constexpr double kDbToNepers = 0.1151292546497;

/// Taps of (b0 + b1 z^-1 + b2 z^-2) / (a0 + a1 z^-1 + a2 z^-2); a0 need not be 1.
struct BiquadSection {
  double b0 = 1.0;
  double b1 = 0.0;
  double b2 = 0.0;
  double a0 = 1.0;
  double a1 = 0.0;
  double a2 = 0.0;
};

/// Corner and width of a section: c = cos(omega), alpha = sin(omega) / (twice the usual Q).
struct SectionShape {
  double cosine = 0.0;
  double alpha = 0.0;
};

/// The corner held between floor and ceiling; a fraction of the sample rate in and out.
double holdCorner(double corner) noexcept;

/// The shape for a corner (a fraction of the sample rate) and a width divisor: alpha is
/// sin(omega) / divisor. Sine and cosine in single precision, as the taps are heard.
SectionShape shapeSection(double corner, double divisor) noexcept;

BiquadSection lowpassSection(const SectionShape& shape) noexcept;
BiquadSection highpassSection(const SectionShape& shape) noexcept;
/// 0 dB at its centre.
BiquadSection bandpassSection(const SectionShape& shape) noexcept;
BiquadSection allpassSection(const SectionShape& shape) noexcept;
/// Gain at the centre: the square of `amplitude`, which is above 0.
BiquadSection peakSection(const SectionShape& shape, double amplitude) noexcept;
/// Gain of the shelf: the square of `amplitude`, which is held above 0.
BiquadSection lowShelfSection(const SectionShape& shape, double amplitude) noexcept;
BiquadSection highShelfSection(const SectionShape& shape, double amplitude) noexcept;

}  // namespace orvantesco
