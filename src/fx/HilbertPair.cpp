#include "fx/HilbertPair.h"

#include <algorithm>

namespace orvantesco {

namespace {

using Coefficients = double[HilbertPair::kSections];

constexpr Coefficients kChainA = {0.150069, 0.453848, 0.708102, 0.858996,
                                  0.935362, 0.971513, 0.988669, 0.998062};
constexpr Coefficients kChainB = {0.0406273, 0.298439, 0.593846, 0.795335,
                                  0.90407,   0.956837, 0.981597, 0.993872};

/// Two neighbouring samples through one section.
[[gnu::always_inline]] inline Lanes step(double c, Lanes& memory, Lanes x) noexcept {
  const Lanes y = bothLanes(c) * x + memory;
  memory = bothLanes(c) * y - x;
  return y;
}

/// What lies below the rounding of 1e-15 vanishes, so that no tail ends in denormals.
void flush(Lanes* memory) noexcept {
  const Lanes offset = bothLanes(1e-15);
  for (int k = 0; k < HilbertPair::kSections; ++k) memory[k] = (memory[k] + offset) - offset;
}

}  // namespace

void HilbertPair::process(const double* in, double* outA, double* outB) noexcept {
  for (int i = 0; i < kVectorLength; i += 2) {
    Lanes a = loadLanes(in + i);
    Lanes b = a;
    for (int k = 0; k < kSections; ++k) {
      a = step(kChainA[k], memoryA[k], a);
      b = step(kChainB[k], memoryB[k], b);
    }
    storeLanes(a, outA + i);
    storeLanes(b, outB + i);
  }
  flush(memoryA);
  flush(memoryB);
}

void HilbertPair::clear() noexcept {
  std::fill_n(memoryA, kSections, Lanes{});
  std::fill_n(memoryB, kSections, Lanes{});
}

}  // namespace orvantesco
