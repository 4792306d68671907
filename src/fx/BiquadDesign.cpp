#include "fx/BiquadDesign.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvantesco {

namespace {

/// A shelf of no amplitude would have no b0, which no cascade can hold: -120 dB is its floor.
constexpr double kLeastShelfAmplitude = 1e-3;

}  // namespace

double holdCorner(double corner) noexcept {
  return std::min(std::max(corner, kCornerFloor), kCornerCeiling);
}

SectionShape shapeSection(double corner, double divisor) noexcept {
  const auto omega = static_cast<float>(2.0 * std::numbers::pi * holdCorner(corner));
  const auto alpha = static_cast<float>(static_cast<double>(std::sin(omega)) / divisor);
  return {static_cast<double>(std::cos(omega)), static_cast<double>(alpha)};
}

BiquadSection lowpassSection(const SectionShape& shape) noexcept {
  const double c = shape.cosine;
  const double b0 = (1.0 - c) / 2.0;
  return {b0, 1.0 - c, b0, 1.0 + shape.alpha, -2.0 * c, 1.0 - shape.alpha};
}

BiquadSection highpassSection(const SectionShape& shape) noexcept {
  const double c = shape.cosine;
  const double b0 = (1.0 + c) / 2.0;
  return {b0, -(1.0 + c), b0, 1.0 + shape.alpha, -2.0 * c, 1.0 - shape.alpha};
}

BiquadSection bandpassSection(const SectionShape& shape) noexcept {
  const double alpha = shape.alpha;
  return {alpha, 0.0, -alpha, 1.0 + alpha, -2.0 * shape.cosine, 1.0 - alpha};
}

BiquadSection allpassSection(const SectionShape& shape) noexcept {
  const double a1 = -2.0 * shape.cosine;
  const double high = 1.0 + shape.alpha;
  const double low = 1.0 - shape.alpha;
  return {low, a1, high, high, a1, low};
}

BiquadSection peakSection(const SectionShape& shape, double amplitude) noexcept {
  const double a1 = -2.0 * shape.cosine;
  const double boost = shape.alpha * amplitude;
  const double cut = shape.alpha / amplitude;
  return {1.0 + boost, a1, 1.0 - boost, 1.0 + cut, a1, 1.0 - cut};
}

BiquadSection lowShelfSection(const SectionShape& shape, double amplitude) noexcept {
  const double a = std::max(amplitude, kLeastShelfAmplitude);
  const double c = shape.cosine;
  const double s = 2.0 * std::sqrt(a) * shape.alpha;
  const double up = a + 1.0;
  const double down = a - 1.0;
  return {a * (up - down * c + s), 2.0 * a * (down - up * c), a * (up - down * c - s),
          up + down * c + s,       -2.0 * (up * c + down),    up + down * c - s};
}

BiquadSection highShelfSection(const SectionShape& shape, double amplitude) noexcept {
  const double a = std::max(amplitude, kLeastShelfAmplitude);
  const double c = shape.cosine;
  const double s = 2.0 * std::sqrt(a) * shape.alpha;
  const double up = a + 1.0;
  const double down = a - 1.0;
  return {a * (up + down * c + s), -2.0 * a * (up * c + down), a * (up + down * c - s),
          up - down * c + s,       2.0 * (down - up * c),      up - down * c - s};
}

}  // namespace orvantesco
