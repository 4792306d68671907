#include "delay/TapLanes.h"

#include "fx/kernels/Level.h"

namespace orvantesco {

namespace {

/// Up to here two lanes do as well as four, of which the others would idle.
constexpr int kNarrowCount = 2;

}  // namespace

const TapLanes& tapLanesFor([[maybe_unused]] int count) noexcept {
#if defined(__x86_64__)
  const kernels::Level level = kernels::levelInForce();
  if (level == kernels::Level::kAvx2 && count > kNarrowCount) return kTapLanesAvx2;
  if (level != kernels::Level::kScalar) return kTapLanesSse2;
#endif
  return kTapLanesScalar;
}

}  // namespace orvantesco
