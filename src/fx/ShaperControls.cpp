#include "fx/ShaperControls.h"

#include <algorithm>

namespace orvantesco {

namespace {

/// The fold's threshold is 1 / (4 (amount - 1.5)), and in "NOISE" 1 / (4 * 0.2).
constexpr double kFoldOffset = 1.5;
constexpr double kNoiseThreshold = 1.0 / (4.0 * 0.2);
constexpr double kLargestTrim = 3.0;

void fill(double* vector, double value) noexcept { std::fill_n(vector, kVectorLength, value); }

}  // namespace

void ShaperControls::clear() noexcept {
  isSteady = false;
  for (double* vector : {amount, gain, trim, threshold}) fill(vector, 1.0);
}

void ShaperControls::setSteady(double value) noexcept {
  isSteady = true;
  fill(amount, value);
}

void ShaperControls::modulate(const double* source, double depth, double base) noexcept {
  isSteady = false;
  for (int i = 0; i < kVectorLength; ++i) {
    amount[i] = std::clamp(source[i] * depth + base, 0.0, 1.0);
  }
}

template <class Rule>
void ShaperControls::derive(Rule rule) noexcept {
  const int count = isSteady ? 1 : kVectorLength;
  for (int i = 0; i < count; ++i) {
    const Cell cell = rule(amount[i], Cell{gain[i], trim[i], threshold[i]});
    gain[i] = cell.gain;
    trim[i] = cell.trim;
    threshold[i] = cell.threshold;
  }
  if (!isSteady) return;
  for (double* vector : {gain, trim, threshold}) fill(vector, vector[0]);
}

void ShaperControls::deriveSaturate() noexcept {
  derive([](double a, const Cell& before) {
    const double square = a * a;
    return Cell{16.0 * square + 1.0, 1.0 / (3.0 * square + 1.0), before.threshold};
  });
}

void ShaperControls::deriveRectify() noexcept {
  derive([](double a, const Cell& before) {
    const double square = a * a;
    return Cell{49.0 * (square * square) + 1.0, 1.0 / (2.0 * a + 1.0), before.threshold};
  });
}

// The trim feeds on its own last value and so settles at 0.618 whatever the amount: "DESTROY" is
// not made up for its loudness, and nothing multiplies by this trim. Users have their levels set to
// the fold as it comes, so the trim stays what it is and stays out of the signal.
void ShaperControls::deriveDestroy() noexcept {
  derive([](double a, const Cell& before) {
    return Cell{15.0 * a + 1.0, 1.0 / (std::min(before.trim, kLargestTrim) + 1.0),
                1.0 / (4.0 * (a - kFoldOffset))};
  });
}

// The trim stays out of the signal here too.
void ShaperControls::deriveNoise() noexcept {
  derive([](double a, const Cell&) {
    const double square = a * a;
    return Cell{100.0 * (square + 0.5) + 1.0, 0.5 * square + 1.0 - a, kNoiseThreshold};
  });
}

void ShaperControls::deriveLofi() noexcept {
  derive([](double a, const Cell& before) {
    return Cell{1.25 * a + 1.0, before.trim, before.threshold};
  });
}

}  // namespace orvantesco
