#pragma once

#include <cstdint>
#include <cstring>

namespace orvantesco {

/// Two doubles side by side, in the vector registers that every x86-64 has (other machines' are
/// the compiler's business): for recursions whose bits must be the same at every processor level,
/// and that are too short for a call through the kernels' table.
using Lanes = double __attribute__((vector_size(16)));

inline Lanes loadLanes(const double* from) noexcept {
  Lanes lanes;
  std::memcpy(&lanes, from, sizeof lanes);
  return lanes;
}

inline void storeLanes(Lanes lanes, double* to) noexcept { std::memcpy(to, &lanes, sizeof lanes); }

inline Lanes bothLanes(double value) noexcept { return Lanes{value, value}; }

/// Magnitudes; a NaN stays one.
inline Lanes magnitudes(Lanes lanes) noexcept {
  using Bits = std::int64_t __attribute__((vector_size(16)));
  constexpr std::int64_t kWithoutSign = 0x7fffffffffffffff;
  Bits bits;
  std::memcpy(&bits, &lanes, sizeof bits);
  bits &= Bits{kWithoutSign, kWithoutSign};
  std::memcpy(&lanes, &bits, sizeof lanes);
  return lanes;
}

}  // namespace orvantesco
