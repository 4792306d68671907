#include "fx/DirectDesign.h"

#include <cstddef>

namespace orvantesco {

namespace {

/// Work space of a design of any order, as `iirDesignBufferSize` reports it.
constexpr std::size_t kWorkBytes = 16800;

}  // namespace

bool writeDirectTaps(const DirectDesign& design, double* taps) noexcept {
  alignas(64) std::byte work[kWorkBytes];
  const auto run = design.band == FilterBand::lowpass ? &iirDesignLowpass : &iirDesignHighpass;
  return run(design.corner, design.rippleDb, design.order, taps, design.type, work) == kStatusOk;
}

}  // namespace orvantesco
