#include "master/MasterLimitFollower.h"

#include <cmath>

#include "fx/Lanes.h"
#include "fx/Runaway.h"

namespace orvantesco {

namespace {

/// Whether any sample is to be passed over.
bool hasSilence(const double* buffer) noexcept {
  const Lanes bound = bothLanes(MasterLimitFollower::kSilence);
  auto heard = magnitudes(loadLanes(buffer)) > bound;
  for (int i = 2; i < kVectorLength; i += 2) heard &= magnitudes(loadLanes(buffer + i)) > bound;
  return (heard[0] & heard[1]) == 0;
}

struct Greater {
  double operator()(double a, double b) const noexcept { return a > b ? a : b; }
};
struct Lesser {
  double operator()(double a, double b) const noexcept { return a < b ? a : b; }
};

/// bound(x, x + (state - x) c) for one sample after the other, in place; returns the last.
template <class Bound>
double followOneLine(double* buffer, double state, double c, Bound bound) noexcept {
  const double share = 1.0 - c;
  const double twice = c * c;
  for (int i = 0; i < kVectorLength; i += 2) {
    const double x0 = buffer[i];
    const double x1 = buffer[i + 1];
    const double b0 = share * x0;
    const double b1 = share * x1;
    const double held = bound(x1, b1 + c * x0);
    const double decayed = b1 + c * b0;
    buffer[i] = bound(x0, b0 + c * state);
    state = bound(held, decayed + twice * state);
    buffer[i + 1] = state;
  }
  return state;
}

/// The same for two lines, of slopes `rise` and `fall`.
template <class Bound>
double followTwoLines(double* buffer, double state, const FollowerRates& rates,
                      Bound bound) noexcept {
  const double rise = rates.rise;
  const double fall = rates.fall;
  const double risen = 1.0 - rise;
  const double fallen = 1.0 - fall;
  for (int i = 0; i < kVectorLength; i += 2) {
    const double x0 = buffer[i];
    const double x1 = buffer[i + 1];
    const double r0 = risen * x0;
    const double f0 = fallen * x0;
    const double r1 = risen * x1;
    const double f1 = fallen * x1;
    const double up = (r1 + rise * r0) + (rise * rise) * state;
    const double down = (f1 + fall * f0) + (fall * fall) * state;
    const double turned = bound(r1 + rise * f0, f1 + fall * r0) + (rise * fall) * state;
    buffer[i] = bound(r0 + rise * state, f0 + fall * state);
    state = bound(bound(up, down), turned);
    buffer[i + 1] = state;
  }
  return state;
}

}  // namespace

MasterLimitFollower::MasterLimitFollower(double restLevel) noexcept
    : rest(restLevel), slow(restLevel), fast(restLevel) {}

void MasterLimitFollower::reset() noexcept {
  Dynamics::reset();
  slow = fast = rest;
}

bool MasterLimitFollower::isSaneState() const noexcept { return isSane(slow) && isSane(fast); }

void MasterLimitFollower::run(double* buffer, const FollowerRates& rates) noexcept {
  if (hasSilence(buffer)) {
    runPlain(buffer, rates);
    return;
  }
  fast = followOneLine(buffer, fast, rates.hold, Greater{});
  runSlow(buffer, rates);
}

// The steeper line is the greater one above the target and the lesser one below it.
void MasterLimitFollower::runSlow(double* buffer, const FollowerRates& rates) noexcept {
  if (rates.rise == 0.0 && rates.fall == 0.0) {
    slow = fast;
  } else if (rates.rise == 0.0) {
    slow = followOneLine(buffer, slow, rates.fall, Greater{});
  } else if (rates.fall == 0.0) {
    slow = followOneLine(buffer, slow, rates.rise, Lesser{});
  } else if (rates.rise <= rates.fall) {
    slow = followTwoLines(buffer, slow, rates, Greater{});
  } else {
    slow = followTwoLines(buffer, slow, rates, Lesser{});
  }
}

void MasterLimitFollower::runPlain(double* buffer, const FollowerRates& rates) noexcept {
  for (int i = 0; i < kVectorLength; ++i) {
    const double x = buffer[i];
    if (!(std::fabs(x) > kSilence)) continue;
    fast = x < fast ? (fast - x) * rates.hold + x : x;
    const double c = fast > slow ? rates.rise : rates.fall;
    slow = (slow - fast) * c + fast;
    buffer[i] = slow;
  }
}

}  // namespace orvantesco
