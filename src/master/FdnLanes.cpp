#include "master/FdnLanes.h"

#include "fx/kernels/Level.h"

namespace orvantesco {

FdnRun fdnRun() noexcept {
#if defined(__x86_64__)
  const kernels::Level level = kernels::levelInForce();
  if (level == kernels::Level::kAvx2) return runFdnAvx2;
  if (level == kernels::Level::kSse2) return runFdnSse2;
#endif
  return runFdnScalar;
}

}  // namespace orvantesco
