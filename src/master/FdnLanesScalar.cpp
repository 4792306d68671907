// The reference that the other levels must agree with, and what machines without vectors run.

#include "fx/kernels/PackScalar.h"
#include "master/FdnLanesBody.h"

namespace orvantesco {

namespace {

struct ScalarLanes {
  using Floats = kernels::scalar::Pack<float, 4>;

  /// Samples at..at+3 of four rows, as one pack for each sample.
  static void loadColumns(const float* const* rows, int at, Floats (&columns)[4]) noexcept {
    for (int k = 0; k < 4; ++k) {
      columns[k] = Floats::make([&](int line) { return rows[line][at + k]; });
    }
  }

  /// The way back.
  static void storeColumns(const Floats (&columns)[4], float (*rows)[kVectorLength],
                           int at) noexcept {
    for (int line = 0; line < 4; ++line) {
      for (int k = 0; k < 4; ++k) rows[line][at + k] = columns[k].lane[line];
    }
  }

  /// Of a NaN and a number, the number.
  static Floats larger(Floats a, Floats b) noexcept { return Floats::larger(a, b); }
  static Floats smaller(Floats a, Floats b) noexcept { return Floats::smaller(a, b); }
};

}  // namespace

void runFdnScalar(FdnVector& vector) noexcept { FdnLanesBody<ScalarLanes>::run(vector); }

}  // namespace orvantesco
