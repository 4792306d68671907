// The reference that the other levels must agree with, and what machines without vectors run.

#include "delay/TapLanesBody.h"
#include "fx/kernels/PackScalar.h"

namespace orvantesco {

namespace {

struct ScalarLanes {
  using Doubles = kernels::scalar::Pack<double, 2>;

  /// The whole parts (towards zero), as ints and as doubles.
  static Doubles truncate(Doubles v, int (&whole)[2]) noexcept {
    return Doubles::make([&](int k) {
      whole[k] = static_cast<int>(v.lane[k]);
      return static_cast<double>(whole[k]);
    });
  }

  /// The first element of each pair in one pack and the second in another.
  static void loadPairs(const double* const (&pairs)[2], Doubles& first, Doubles& second) noexcept {
    first = {pairs[0][0], pairs[1][0]};
    second = {pairs[0][1], pairs[1][1]};
  }

  /// kLanes samples of each of kLanes sources, from i on, as one pack for each sample.
  static void loadRows(const double* const (&from)[2], int i, Doubles (&rows)[2]) noexcept {
    loadPairs({from[0] + i, from[1] + i}, rows[0], rows[1]);
  }

  /// The way back.
  static void storeRows(const Doubles (&rows)[2], double* const (&to)[2], int i) noexcept {
    for (int k = 0; k < 2; ++k) {
      to[k][i] = rows[0].lane[k];
      to[k][i + 1] = rows[1].lane[k];
    }
  }
};

}  // namespace

constinit const TapLanes kTapLanesScalar = {TapLanesBody<ScalarLanes>::readSettled,
                                            TapLanesBody<ScalarLanes>::readMoving,
                                            TapLanesBody<ScalarLanes>::addRows};

}  // namespace orvantesco
