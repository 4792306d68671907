#include "fx/HilbertPair.h"

#include <algorithm>
#include <utility>

namespace orvantesco {

namespace {

using Coefficients = double[HilbertPair::kSections];

constexpr Coefficients kChainA = {0.150069, 0.453848, 0.708102, 0.858996,
                                  0.935362, 0.971513, 0.988669, 0.998062};
constexpr Coefficients kChainB = {0.0406273, 0.298439, 0.593846, 0.795335,
                                  0.90407,   0.956837, 0.981597, 0.993872};

/// One chain over a vector. The sections are unrolled, so that their memories stay in registers.
template <int... k>
// One of the five is there for its type only. NOLINTNEXTLINE(readability-function-size)
void runChain(std::integer_sequence<int, k...>, const Coefficients& c, Lanes* memory,
              const double* in, double* out) noexcept {
  Lanes s[] = {memory[k]...};
  const auto step = [&](int section, Lanes x) __attribute__((always_inline)) {
    const Lanes factor = bothLanes(c[section]);
    const Lanes y = factor * x + s[section];
    s[section] = factor * y - x;
    return y;
  };
  for (int i = 0; i < kVectorLength; i += 2) {
    Lanes x = loadLanes(in + i);
    ((x = step(k, x)), ...);
    storeLanes(x, out + i);
  }
  // What lies below the rounding of 1e-15 vanishes, so that no tail ends in denormals.
  const Lanes offset = bothLanes(1e-15);
  ((memory[k] = (s[k] + offset) - offset), ...);
}

constexpr auto kAll = std::make_integer_sequence<int, HilbertPair::kSections>{};

}  // namespace

void HilbertPair::process(const double* in, double* outA, double* outB) noexcept {
  runChain(kAll, kChainA, memoryA, in, outA);
  runChain(kAll, kChainB, memoryB, in, outB);
}

void HilbertPair::clear() noexcept {
  std::fill_n(memoryA, kSections, Lanes{});
  std::fill_n(memoryB, kSections, Lanes{});
}

}  // namespace orvantesco
