#if defined(__x86_64__)

#include "fx/kernels/PackSse2.h"
#include "fx/kernels/ShapeLoopsBody.h"

namespace orvantesco::kernels {

constinit const ShapeLoops shapeLoopsSse2 = makeShapeLoops<sse2::Doubles>();

}  // namespace orvantesco::kernels

#endif
