#include "delay/RingDelay.h"

#include <algorithm>
#include <bit>
#include <cassert>

#include "fx/RateValues.h"
#include "fx/Runaway.h"

namespace orvantesco {

namespace {

/// A delay of thousands of samples needs its last bits: they are where between two samples it
/// reads.
constexpr double kRestTolerance = 4e-15;

int lengthWithin(int n) noexcept {
  assert(n >= 1 && n <= kVectorLength);
  return std::clamp(n, 1, kVectorLength);
}

}  // namespace

void RingDelay::resize(int samples, double smoothingMs) {
  const unsigned wanted = static_cast<unsigned>(std::max(samples, 2 * DelayRing::kGuard));
  ring.allocate(static_cast<int>(std::bit_ceil(wanted)));
  timeSmoother.setTime(smoothingMs);
  timeSmoother.setRestTolerance(kRestTolerance);
  timeSmoother.snap(0.0);
  clear();
}

void RingDelay::clear() noexcept {
  ring.reset();
  apState = 0.0;
  std::fill_n(scratch, kVectorLength, 0.0);
}

void RingDelay::rateChanged() noexcept {
  timeSmoother.rateChanged();
  clear();
}

const double* RingDelay::read(double delaySamples, int n) noexcept {
  n = lengthWithin(n);
  const double longest = mask();
  const int back = delaySamples > 0.0 ? static_cast<int>(std::min(delaySamples, longest)) : 0;
  const int first = ring.writePosition() - back - n;
  if (first >= 0 && ring.holds(first, n)) return ring.data() + first;
  for (int i = 0; i < n; ++i) scratch[i] = ring.at((first + i) & mask());
  return scratch;
}

const double* RingDelay::readModulated(double delaySamples, int n) noexcept {
  n = lengthWithin(n);
  const double shortest = minModDelay;
  const double longest = mask();
  const double target = delaySamples > shortest ? std::min(delaySamples, longest) : shortest;
  const double* delays = timeSmoother.ramp(target, n);
  const int origin = ring.writePosition() - n;
  double y = apState;
  for (int i = 0; i < n; ++i) {
    const int whole = static_cast<int>(delays[i]);
    const double f = delays[i] - whole;
    const int p = origin + i - whole;
    y = (ring.at(p & mask()) - y) * ((1.0 - f) / (1.0 + f)) + ring.at((p - 1) & mask());
    scratch[i] = y;
  }
  apState = saneOrZero(y);
  return scratch;
}

}  // namespace orvantesco
