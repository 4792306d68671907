#pragma once

namespace orvantesco {

/// 2^t in single precision by a polynomial of degree 4 in the fraction of t, which is within
/// 2e-5 of the power for t above 0. Below 0 the whole part is cut towards 0 and the polynomial
/// leaves its range: the result stays positive and falls off more slowly than the power.
/// What is no number counts as 0.
double powerOfTwoCurve(float t) noexcept;

/// The frequency in Hz of a normalised control: 50 * 400^c by the polynomial above, so 50 Hz at 0
/// and 20 kHz at 1.
double curveFrequencyHz(double control) noexcept;

}  // namespace orvantesco
