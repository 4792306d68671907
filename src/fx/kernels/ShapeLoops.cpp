#include "fx/kernels/ShapeLoops.h"

#include "fx/kernels/Level.h"

namespace orvantesco::kernels {

const ShapeLoops& shapeLoops() noexcept {
#if defined(__x86_64__)
  switch (levelInForce()) {
    case Level::kAvx2:
      return shapeLoopsAvx2;
    case Level::kSse2:
      return shapeLoopsSse2;
    case Level::kScalar:
      break;
  }
#endif
  return shapeLoopsScalar;
}

}  // namespace orvantesco::kernels
