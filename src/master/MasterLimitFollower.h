#pragma once

#include "fx/Dynamics.h"

namespace orvantesco {

/// Coefficients of a follower: exp(-1 / (rate * t)) for a time constant t, 0 for at once.
struct FollowerRates {
  double rise = 0.0;
  double fall = 0.0;
  double hold = 0.0;
};

/// A peak follower of the limiter: one sample after the other, in two steps. The first jumps up to
/// every peak and decays behind it; the second follows the first at its own speed up and down:
///
///     fast = max(x, x + (fast - x) hold)
///     slow = fast + (slow - fast) c,   c = rise while fast > slow, else fall
///
/// A sample within 1e-15 of 0, or that is no number, moves nothing and stays in the buffer, so
/// silence leaves a follower where it was.
///
/// Both steps are the greater (or the lesser) of two straight lines in the state, so two samples
/// can be taken at once with the recursion solved ahead; that differs from the plain recursion by
/// roundings, a few 1e-16 of the signal.
class MasterLimitFollower : public Dynamics {
 public:
  static constexpr double kSilence = 1e-15;

  /// The value that a reset puts both states to.
  explicit MasterLimitFollower(double restLevel = 0.0) noexcept;

  void reset() noexcept override;

  /// Follows 32 samples in place. Rates are within 0..1.
  void run(double* buffer, const FollowerRates& rates) noexcept;

  /// False where what was followed has run away.
  bool isSaneState() const noexcept;

 private:
  void runPlain(double* buffer, const FollowerRates& rates) noexcept;
  void runSlow(double* buffer, const FollowerRates& rates) noexcept;

  double rest = 0.0;
  double slow = 0.0;
  double fast = 0.0;
};

}  // namespace orvantesco
