#include "fx/QLMFilter.h"

#include <algorithm>
#include <cmath>

namespace orvantesco {

QLMFilter::QLMFilter(bool isRight) noexcept : DSPShell(isRight) {}

bool QLMFilter::controlsChanged() noexcept {
  if (cutoffNow != cutoffLast) {
    cutoffLast = cutoffNow;
    return true;
  }
  if (resonanceNow != resonanceLast) {
    resonanceLast = resonanceNow;
    return true;
  }
  if (gainNow != gainLast) {
    gainLast = gainNow;
    return true;
  }
  return false;
}

void QLMFilter::restoreControls() noexcept {
  cutoffNow = cutoffLast = 0.0;
  resonanceNow = resonanceLast = 0.0;
  gainNow = gainLast = 1.0;
  sweepDamping = 1.0;
}

void QLMFilter::rateChanged() noexcept {
  DSPShell::rateChanged();
  cutoffSmoother.rateChanged();
  resonanceSmoother.rateChanged();
  gainSmoother.rateChanged();
  restoreControls();
}

void QLMFilter::clearMemories() noexcept {
  DSPShell::clearMemories();
  cutoffSmoother.snap(0.0);
  resonanceSmoother.snap(0.0);
  gainSmoother.snap(0.0);
  restoreControls();
}

void QLMFilter::setCutoff(double value) noexcept {
  if (std::isnan(value)) return;
  cutoff = static_cast<double>(std::clamp(static_cast<float>(value), 0.0F, 1.0F));
}

void QLMFilter::setSpread(double value) noexcept {
  spread = std::fabs(value) * value * channelSign;
}

double QLMFilter::smoothedCutoff() noexcept {
  double target = cutoff + spread;
  if (modSource[0] != nullptr) target += modulationOf(0);
  if (modSource[2] != nullptr) target += modulationOf(2) * channelSign;
  return cutoffSmoother.tick(target);
}

double QLMFilter::modulatedResonance() const noexcept {
  if (modSource[1] == nullptr) return resonance;
  return std::clamp(modulationOf(1) + resonance, 0.0, 1.0);
}

}  // namespace orvantesco
